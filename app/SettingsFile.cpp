#include "app/SettingsFile.h"

#include <windows.h>

#include <array>
#include <utility>

#include "base/FatalError.h"
#include "base/Number.h"
#include "ui/HeldFile.h"

namespace tellurvane {
namespace {

constexpr const wchar_t* kSection = L"Setting";
constexpr size_t kBufferUnits = 128;

// Opens it like GetPrivateProfileStringW.
UniqueKernelHandle OpenToRead(const std::wstring& path) {
  return OpenFile(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_EXISTING);
}

const wchar_t* ReasonForNoValue(const std::wstring& path) {
  const bool isOpened = static_cast<bool>(OpenToRead(path));
  return !isOpened && IsHeldByOthers(GetLastError()) ? L"無法讀取，設定檔可能正由其他程式使用"
                                                     : L"沒有數值";
}

}  // namespace

SettingsFile::SettingsFile(std::wstring path, Pause pause)
    : path_(std::move(path)), pause_(std::move(pause)) {}

Settings SettingsFile::ReadAll() const {
  // Keeps the file open until all values are read, so that no program can lock it. If it cannot be
  // opened, ReadNumber reports it.
  UniqueKernelHandle opened;
  (void)HeldFileRetry(pause_).Try([&] {
    opened = OpenToRead(path_);
    return static_cast<bool>(opened);
  });
  Settings settings;
  settings.SavedVolume = ReadNumber(L"SavedVolume");
  settings.TimeForm = ReadNumber(L"TimeForm");
  settings.SongLoop = ReadNumber(L"SongLoop");
  settings.StartPlay = ReadNumber(L"StartPlay");
  settings.FilesPath = Read(L"FilesPath");
  settings.HinetUrl = Read(L"HinetUrl");
  return settings;
}

std::wstring SettingsFile::Read(const std::wstring& key) const {
  std::array<wchar_t, kBufferUnits> buffer = {};
  GetPrivateProfileStringW(kSection, key.c_str(), L"", buffer.data(), kBufferUnits, path_.c_str());
  std::wstring value(buffer.begin(), buffer.end());
  std::erase(value, L'\0');
  return value;
}

bool SettingsFile::Write(const std::wstring& key, const std::wstring& value) const {
  return WritePrivateProfileStringW(kSection, key.c_str(), value.c_str(), path_.c_str()) != 0;
}

bool SettingsFile::Write(const std::wstring& key, std::int32_t value) const {
  return Write(key, std::to_wstring(value));
}

std::int32_t SettingsFile::ReadNumber(const std::wstring& key) const {
  const std::wstring text = Read(key);
  if (const auto number = ParseInteger(text)) return *number;
  throw FatalError(L"設定檔 Setting.ini 的「" + key + L"」" +
                   (text.empty() ? ReasonForNoValue(path_) : L"不是有效的數字：" + text) +
                   L"。\n\n請檢查程式資料夾裡的設定檔：\n" + path_);
}

}  // namespace tellurvane
