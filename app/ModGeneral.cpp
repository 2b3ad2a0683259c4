#include "app/ModGeneral.h"

#include <windows.h>

#include <objidl.h>

#include <gdiplus.h>
#include <shlwapi.h>

#include "base/FatalError.h"
#include "base/LocaleDates.h"
#include "scheduler/DecodeAnsi.h"
#include "ui/Handle.h"
#include "ui/Resource.h"

namespace tellurvane {
namespace {

UniqueKernelHandle instanceMutex;
ULONG_PTR gdiplusToken = 0;
constexpr int kFirstIconResource = 101;
constexpr const wchar_t* kIconGroups[] = {L"TRYING", L"FAILED"};

std::unique_ptr<ClsIcon> LoadedIcon(std::string_view bytes) {
  auto icon = std::make_unique<ClsIcon>();
  if (!icon->LoadFromData(bytes)) {
    throw FatalError(L"程式內的圖示資料已損壞，程式無法繼續執行。");
  }
  return icon;
}

TaskListDialect UserDialect() {
  return {
      .dateReader = UserDateReader, .writeDate = AppendLocaleDateText, .decodeAnsi = DecodeAnsi};
}

}  // namespace

ModGeneral::ModGeneral(const std::wstring& applicationFolder)
    : settingsFile(applicationFolder + L"\\Setting.ini"),
      settings(settingsFile.ReadAll()),
      // Deliberately a doubled separator, which the file system accepts.
      taskListFile(files_, applicationFolder + L"\\" + L"\\JobList.dbs", UserDialect(), Now) {}

void ModGeneral::LoadIcons() {
  const size_t custom = icons.size() - std::size(kIconGroups);
  for (size_t i = 0; i < custom; ++i) {
    const int id = kFirstIconResource + static_cast<int>(i);
    icons[i] = LoadedIcon(ResourceBytes(id, L"CUSTOM"));
  }
  for (size_t i = custom; i < icons.size(); ++i) {
    icons[i] = LoadedIcon(IconGroupBytes(kIconGroups[i - custom]));
  }
}

void ModGeneral::ReleaseIcons() {
  for (std::unique_ptr<ClsIcon>& icon : icons) icon.reset();
}

std::wstring ModulePath() {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    if (length == 0) throw FatalError(L"無法取得程式所在的資料夾，程式無法繼續執行。");
    if (length < path.size()) {
      path.resize(length);
      return path;
    }
    path.resize(path.size() * 2);
  }
}

std::wstring ApplicationFolder() {
  std::wstring path = ModulePath();
  path.resize(path.find_last_of(L'\\'));
  return path.size() == 2 ? path + L"\\" : path;
}

bool ClaimInstance() {
  instanceMutex.Reset(CreateMutexW(nullptr, TRUE, kApplicationTitle));
  // No handle: another user's copy owns the name.
  if (instanceMutex && GetLastError() != ERROR_ALREADY_EXISTS) return true;
  ReleaseInstance();
  return false;
}

void ReleaseInstance() noexcept {
  if (!instanceMutex) return;
  ReleaseMutex(instanceMutex.Get());
  instanceMutex.Reset();
}

bool StartGdiplus() {
  // The first delayed call of a missing library would raise an exception. Never freed: the process
  // needs it to its end.
  // cppcheck-suppress leakReturnValNotUsed
  if (LoadLibraryW(L"gdiplus.dll") == nullptr) return false;
  const Gdiplus::GdiplusStartupInput input;
  return Gdiplus::GdiplusStartup(&gdiplusToken, &input, nullptr) == Gdiplus::Ok;
}

void StopGdiplus() {
  Gdiplus::GdiplusShutdown(gdiplusToken);
  gdiplusToken = 0;
}

bool PathExists(const std::wstring& path) { return PathFileExistsW(path.c_str()) != 0; }

}  // namespace tellurvane
