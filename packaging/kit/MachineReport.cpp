#include "packaging/kit/MachineReport.h"

#include <windows.h>

#include <shlobj.h>

#include <array>
#include <cstdio>

#include "base/CodePage.h"

namespace tellurvane {
namespace {

// A function that some versions of the system do not have.
template <typename Function>
Function FunctionOf(const wchar_t* library, const char* name) {
  const HMODULE module = LoadLibraryExW(library, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
  if (module == nullptr) return nullptr;
  return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

std::string Time() {
  SYSTEMTIME now = {};
  GetLocalTime(&now);
  std::array<char, 40> text = {};
  (void)std::snprintf(text.data(), text.size(), "%04d-%02d-%02d %02d:%02d:%02d", now.wYear,
                      now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond);
  return text.data();
}

// GetVersionEx answers by the manifest, RtlGetVersion by the system.
std::string WindowsVersion() {
  using GetVersion = LONG(WINAPI*)(OSVERSIONINFOW * version);
  using GetWineVersion = const char*(CDECL*)();
  OSVERSIONINFOW version = {};
  version.dwOSVersionInfoSize = sizeof(version);
  const auto get = FunctionOf<GetVersion>(L"ntdll.dll", "RtlGetVersion");
  if (get != nullptr) get(&version);
  std::string text = std::to_string(version.dwMajorVersion) + "." +
                     std::to_string(version.dwMinorVersion) + "." +
                     std::to_string(version.dwBuildNumber);
  const auto wine = FunctionOf<GetWineVersion>(L"ntdll.dll", "wine_get_version");
  if (wine != nullptr) text += std::string("（Wine ") + wine() + "）";
  return text;
}

std::string Language() {
  std::array<wchar_t, LOCALE_NAME_MAX_LENGTH> locale = {};
  GetUserDefaultLocaleName(locale.data(), static_cast<int>(locale.size()));
  std::array<wchar_t, LOCALE_NAME_MAX_LENGTH> display = {};
  LCIDToLocaleName(GetUserDefaultUILanguage(), display.data(), static_cast<int>(display.size()), 0);
  return "地區格式 " + Utf8(locale.data()) + "，顯示語言 " + Utf8(display.data()) +
         "，ANSI 字碼頁 " + std::to_string(GetACP());
}

UINT DensityOf(HMONITOR monitor) {
  using GetDpi = HRESULT(WINAPI*)(HMONITOR monitor, int kind, UINT* x, UINT* y);
  constexpr int kEffective = 0;
  static const auto get = FunctionOf<GetDpi>(L"shcore.dll", "GetDpiForMonitor");
  UINT x = 0;
  UINT y = 0;
  return get != nullptr && SUCCEEDED(get(monitor, kEffective, &x, &y)) ? x : 0;
}

BOOL CALLBACK AddScreen(HMONITOR monitor, HDC /*context*/, LPRECT /*place*/, LPARAM facts) {
  MONITORINFO info = {};
  info.cbSize = sizeof(info);
  GetMonitorInfoW(monitor, &info);
  const RECT& place = info.rcMonitor;
  const UINT dpi = DensityOf(monitor);
  reinterpret_cast<MachineFacts*>(facts)->push_back(
      "螢幕：" + std::to_string(place.right - place.left) + " x " +
      std::to_string(place.bottom - place.top) + "，位置 " + std::to_string(place.left) + "," +
      std::to_string(place.top) + "，" + std::to_string(dpi) + " dpi（" +
      std::to_string(dpi * 100 / USER_DEFAULT_SCREEN_DPI) + " %）" +
      ((info.dwFlags & MONITORINFOF_PRIMARY) != 0 ? "，主螢幕" : ""));
  return TRUE;
}

}  // namespace

MachineFacts FactsOfThisMachine() {
  // Without this the system answers 96 dpi for every screen.
  using SetAwareness = HRESULT(WINAPI*)(int awareness);
  constexpr int kPerMonitor = 2;
  const auto setAwareness = FunctionOf<SetAwareness>(L"shcore.dll", "SetProcessDpiAwareness");
  if (setAwareness != nullptr) setAwareness(kPerMonitor);
  MachineFacts facts = {
      "時間：" + Time(), "Windows：" + WindowsVersion(), "語言：" + Language(),
      std::string("系統管理員權限：") + (IsUserAnAdmin() != FALSE ? "有" : "沒有")};
  EnumDisplayMonitors(nullptr, nullptr, AddScreen, reinterpret_cast<LPARAM>(&facts));
  return facts;
}

}  // namespace tellurvane
