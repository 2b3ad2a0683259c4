#include "ui/ClsIcon.h"

#include "ui/Handle.h"

namespace tellurvane {
namespace {

constexpr DWORD kIconVersion = 0x30000;

// A larger file is no icon.
constexpr LONGLONG kLargestFile = 16 << 20;

// Empty when the file cannot be read. The stream library would double the program's size.
std::string FileBytes(const std::wstring& path) {
  const UniqueKernelHandle file =
      OwnedFile(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                            FILE_ATTRIBUTE_NORMAL, nullptr));
  LARGE_INTEGER size = {};
  if (!file || !GetFileSizeEx(file.Get(), &size) || size.QuadPart > kLargestFile) return {};
  std::string bytes(static_cast<size_t>(size.QuadPart), '\0');
  DWORD read = 0;
  if (!ReadFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr)) {
    return {};
  }
  bytes.resize(read);
  return bytes;
}

}  // namespace

bool ClsIcon::LoadFromData(std::string_view bytes) {
  directory_ = ParseIconDirectory(bytes);
  if (directory_.empty()) {
    bytes_.clear();
    return false;
  }
  bytes_ = bytes;
  return true;
}

bool ClsIcon::LoadFromFile(const std::wstring& path) {
  return !path.empty() && LoadFromData(FileBytes(path));
}

IconEntry ClsIcon::Entry(int index) const {
  if (index < 0 || index >= Count()) return {};
  return directory_[static_cast<size_t>(index)];
}

bool ClsIcon::Draw(HDC target, int x, int y, int index) const {
  const std::string_view data = Data(index);
  // Each image is larger than its header. The system checks the rest against the length.
  if (data.size() <= sizeof(BITMAPINFOHEADER)) return false;
  // The system's interface takes the bytes as writable; it only reads them.
  auto* const image = reinterpret_cast<BYTE*>(const_cast<char*>(data.data()));
  const int width = Width(index);
  const int height = Height(index);
  const UniqueIcon icon(CreateIconFromResourceEx(image, static_cast<DWORD>(data.size()), TRUE,
                                                 kIconVersion, width, height, 0));
  if (!icon) return false;
  return DrawIconEx(target, x, y, icon.Get(), width, height, 0, nullptr, DI_NORMAL) != 0;
}

}  // namespace tellurvane
