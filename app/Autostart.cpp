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
constexpr const wchar_t* kUserRunValue = L"RunTellurvane";

UniqueKey OpenMachineKey() {
  UniqueKey key;
  HKEY opened = nullptr;
  if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, kRunKey, 0, KEY_SET_VALUE, &opened) == ERROR_SUCCESS) {
    key.Reset(opened);
  }
  return key;
}

bool WriteMachineValue(const std::wstring& executable) {
  const UniqueKey key = OpenMachineKey();
  if (!key) return false;
  const std::string bytes = AnsiText(executable);
  if (bytes.empty()) return false;
  return RegSetValueExA(key.Get(), kRunValue, 0, REG_SZ,
                        reinterpret_cast<const BYTE*>(bytes.data()),
                        static_cast<DWORD>(bytes.size())) == ERROR_SUCCESS;
}

bool IsGone(LSTATUS status) { return status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND; }

bool DeleteMachineValue() {
  const UniqueKey key = OpenMachineKey();
  return key && IsGone(RegDeleteValueA(key.Get(), kRunValue));
}

// In quotes: the value is a command line, and the path may contain blanks.
bool WriteUserValue(const std::wstring& executable) {
  const std::wstring command = L"\"" + executable + L"\"";
  return RegSetKeyValueW(HKEY_CURRENT_USER, kRunKey, kUserRunValue, REG_SZ, command.c_str(),
                         static_cast<DWORD>((command.size() + 1) * sizeof(wchar_t))) ==
         ERROR_SUCCESS;
}

bool DeleteUserValue() {
  return IsGone(RegDeleteKeyValueW(HKEY_CURRENT_USER, kRunKey, kUserRunValue));
}

}  // namespace

bool WriteRunValue(const std::wstring& executable) {
  if (!WriteMachineValue(executable)) return WriteUserValue(executable);
  // If the other value stays, the second copy ends silently.
  (void)DeleteUserValue();
  return true;
}

bool DeleteRunValue() {
  const bool isMachineDone = DeleteMachineValue();
  const bool isUserDone = DeleteUserValue();
  return isMachineDone && isUserDone;
}

std::wstring ExecutablePath() {
  const std::wstring module = ModulePath();
  const std::wstring folder = ApplicationFolder();
  std::wstring name = module.substr(module.find_last_of(L'\\') + 1);
  name.resize(std::min(name.find_last_of(L'.'), name.size()));
  // Deliberately put together: the extension is always ".exe". A program in a drive's root gets a
  // doubled separator, which the system accepts.
  return folder + L"\\" + name + L".exe";
}

}  // namespace tellurvane
