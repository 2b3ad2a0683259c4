#include "ui/Resource.h"

#include "base/FatalError.h"

namespace tellurvane {
namespace {

std::string_view BytesOf(const wchar_t* name, const wchar_t* type, const std::wstring& shown) {
  const HMODULE module = GetModuleHandleW(nullptr);
  const HRSRC place = FindResourceW(module, name, type);
  const HGLOBAL loaded = place == nullptr ? nullptr : LoadResource(module, place);
  const void* const bytes = loaded == nullptr ? nullptr : LockResource(loaded);
  if (bytes == nullptr) {
    throw FatalError(L"找不到程式內的資源 " + shown + L"，執行檔可能已經損壞，請重新安裝。");
  }
  return {static_cast<const char*>(bytes), SizeofResource(module, place)};
}

size_t Word(std::string_view bytes, size_t at) {
  return static_cast<unsigned char>(bytes[at]) |
         static_cast<size_t>(static_cast<unsigned char>(bytes[at + 1])) << 8;
}

}  // namespace

std::string_view ResourceBytes(int id, const wchar_t* type) {
  return BytesOf(MAKEINTRESOURCEW(id), type, std::to_wstring(id));
}

// The resource's entries end with the number of the image, those of a file with its offset.
std::string IconGroupBytes(const wchar_t* name) {
  constexpr size_t kHeader = 6;
  constexpr size_t kCountAt = 4;
  constexpr size_t kSharedPart = 12;
  constexpr size_t kGroupEntry = kSharedPart + sizeof(WORD);
  constexpr size_t kFileEntry = kSharedPart + sizeof(DWORD);
  const std::string_view group = BytesOf(name, RT_GROUP_ICON, name);
  const size_t count = Word(group, kCountAt);
  std::string directory(group.substr(0, kHeader));
  std::string images;
  for (size_t i = 0; i < count; ++i) {
    const std::string_view entry = group.substr(kHeader + i * kGroupEntry, kGroupEntry);
    const size_t offset = kHeader + count * kFileEntry + images.size();
    directory += entry.substr(0, kSharedPart);
    for (unsigned shift = 0; shift < 32; shift += 8) {
      directory += static_cast<char>(offset >> shift & 0xFF);
    }
    images += ResourceBytes(static_cast<int>(Word(entry, kSharedPart)), RT_ICON);
  }
  return directory + images;
}

}  // namespace tellurvane
