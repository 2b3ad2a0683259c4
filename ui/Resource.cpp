#include "ui/Resource.h"

#include <string>

#include "base/FatalError.h"

namespace tellurvane {

std::string_view ResourceBytes(int id, const wchar_t* type) {
  const HMODULE module = GetModuleHandleW(nullptr);
  const HRSRC place = FindResourceW(module, MAKEINTRESOURCEW(id), type);
  const HGLOBAL loaded = place == nullptr ? nullptr : LoadResource(module, place);
  const void* const bytes = loaded == nullptr ? nullptr : LockResource(loaded);
  if (bytes == nullptr) {
    throw FatalError(L"找不到程式內的資源 " + std::to_wstring(id) +
                     L"，執行檔可能已經損壞，請重新安裝。");
  }
  return {static_cast<const char*>(bytes), SizeofResource(module, place)};
}

}  // namespace tellurvane
