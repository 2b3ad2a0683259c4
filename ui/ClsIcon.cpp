#include "ui/ClsIcon.h"

#include <fstream>
#include <iterator>

#include "ui/Handle.h"

namespace tellurvane {
namespace {

constexpr DWORD kIconVersion = 0x30000;

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
  if (path.empty()) return false;
  std::ifstream file(path.c_str(), std::ios::binary);
  return LoadFromData(std::string(std::istreambuf_iterator<char>(file), {}));
}

IconEntry ClsIcon::Entry(int index) const {
  if (index < 0 || index >= Count()) return {};
  return directory_[static_cast<size_t>(index)];
}

bool ClsIcon::Draw(HDC target, int x, int y, int index) const {
  const std::string_view data = Data(index);
  // Even an image that is nothing but a header is larger. What follows the header the system
  // checks against the length by itself.
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
