#include "app/Autostart.h"

#include <windows.h>

#include <algorithm>

#include "app/ModGeneral.h"
#include "ui/AnsiText.h"
#include "ui/Handle.h"

namespace tellurvane {
namespace {

constexpr const wchar_t* kRunKey = L"Software\\Microsoft\\Windows\\CurrentVersion\\Run";
constexpr const char* kRunValue = "RunTellurvane";

UniqueKey OpenRunKey() {
  UniqueKey key;
  HKEY opened = nullptr;
  if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, kRunKey, 0, KEY_SET_VALUE, &opened) == ERROR_SUCCESS) {
    key.Reset(opened);
  }
  return key;
}

}  // namespace

bool WriteRunValue(const std::wstring& executable) {
  const UniqueKey key = OpenRunKey();
  if (!key) return false;
  const std::string bytes = AnsiText(executable);
  if (bytes.empty()) return false;
  return RegSetValueExA(key.Get(), kRunValue, 0, REG_SZ,
                        reinterpret_cast<const BYTE*>(bytes.data()),
                        static_cast<DWORD>(bytes.size())) == ERROR_SUCCESS;
}

bool DeleteRunValue() {
  const UniqueKey key = OpenRunKey();
  if (!key) return false;
  const LSTATUS status = RegDeleteValueA(key.Get(), kRunValue);
  return status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND;
}

std::wstring ExecutablePath() {
  const std::wstring module = ModulePath();
  const std::wstring folder = ApplicationFolder();
  std::wstring name = module.substr(module.find_last_of(L'\\') + 1);
  name.resize(std::min(name.find_last_of(L'.'), name.size()));
  // Deliberately put together anew: the extension is always written as ".exe", and a program in a
  // drive's root gets a doubled separator, which the system takes for one.
  return folder + L"\\" + name + L".exe";
}

}  // namespace tellurvane
