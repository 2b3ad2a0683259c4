// The process's own things where the platform refuses.
#include <windows.h>

#include <gtest/gtest.h>

#include <climits>
#include <memory>
#include <string>

#include "app/Autostart.h"
#include "app/ModGeneral.h"
#include "app/OpenFileDialog.h"
#include "app/SettingsFile.h"
#include "tests/support/EachCallFails.h"
#include "tests/support/FailingImport.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/WholeSettings.h"
#include "tests/support/WindowTestSupport.h"
#include "ui/Handle.h"

namespace tellurvane {
namespace {

std::string With(const std::wstring& volume) { return WholeSettings{.volume = volume}.Bytes(); }

class SettingsScenario {
 public:
  void Prepare() {
    folder_ = std::make_unique<TemporaryFolder>();
    WriteBytes(Path(), With(L"37"));
    isWritten_ = false;
  }
  void ReadAndWrite() {
    const SettingsFile file(Path(), [](unsigned) {});
    EXPECT_EQ(file.ReadAll().SavedVolume, 37);
    isWritten_ = file.Write(L"SavedVolume", 50);
  }
  std::string Fault() const {
    return ReadBytes(Path()) == With(isWritten_ ? L"50" : L"37") ? "" : "not what was told";
  }

 private:
  std::wstring Path() const { return folder_->File(L"Setting.ini"); }

  std::unique_ptr<TemporaryFolder> folder_;
  bool isWritten_ = false;
};

TEST(FailingCallsTest, TheSettingsAreReadAndWrittenOrLeftAlone) {
  SettingsScenario scenario;
  FailEachCall({"settings",
                [&] { scenario.ReadAndWrite(); },
                {"CreateFileW", "GetPrivateProfileStringW", "WritePrivateProfileStringW"},
                [&] { scenario.Prepare(); },
                [&] { return scenario.Fault(); }});
}

constexpr const wchar_t* kProgram = L"C:\\Tools\\clock.exe";
const std::wstring kQuoted = L"\"" + std::wstring(kProgram) + L"\"";

std::wstring StoredRunValue(HKEY root) {
  std::wstring text(100, L'\0');
  auto size = static_cast<DWORD>(text.size() * sizeof(wchar_t));
  const LSTATUS status = RegGetValueW(root, L"Software\\Microsoft\\Windows\\CurrentVersion\\Run",
                                      L"RunTellurvane", RRF_RT_REG_SZ, nullptr, text.data(), &size);
  return status == ERROR_SUCCESS ? std::wstring(text.c_str()) : L"none";
}

// Both keys as an ordinary user leaves them and an administrator after him: a value in each.
void WriteBothRunValues() {
  FailingImport machine({"RegSetValueExA", ERROR_ACCESS_DENIED, ERROR_ACCESS_DENIED});
  machine.Fail(1);
  ASSERT_TRUE(WriteRunValue(kProgram));
  FailingImport user({"RegDeleteKeyValueW", ERROR_ACCESS_DENIED, ERROR_ACCESS_DENIED});
  user.Fail(1);
  ASSERT_TRUE(WriteRunValue(kProgram));
}

TEST(FailingCallsTest, StartWithWindowsIsWrittenWholeOrNotAtAll) {
  bool isWritten = false;
  FailEachCall({"start with Windows",
                [&] { isWritten = WriteRunValue(kProgram); },
                {"RegOpenKeyExW", "RegSetValueExA"},
                [&] {
                  ASSERT_TRUE(DeleteRunValue());
                  isWritten = false;
                },
                [&] {
                  const std::wstring machine = StoredRunValue(HKEY_LOCAL_MACHINE);
                  const std::wstring user = StoredRunValue(HKEY_CURRENT_USER);
                  const bool isInOne = (machine == kProgram && user == L"none") ||
                                       (machine == L"none" && user == kQuoted);
                  const bool isInNone = machine == L"none" && user == L"none";
                  return (isWritten ? isInOne : isInNone) ? "" : "not what was told";
                }});
  ASSERT_TRUE(DeleteRunValue());
}

TEST(FailingCallsTest, StartWithWindowsIsTakenBackAsFarAsItIsAllowed) {
  bool isDeleted = false;
  FailEachCall({"start without Windows",
                [&] { isDeleted = DeleteRunValue(); },
                {"RegDeleteKeyValueW", "RegDeleteValueA", "RegOpenKeyExW"},
                [&] {
                  WriteBothRunValues();
                  isDeleted = false;
                },
                [&] {
                  const bool isGone = StoredRunValue(HKEY_LOCAL_MACHINE) == L"none" &&
                                      StoredRunValue(HKEY_CURRENT_USER) == L"none";
                  return isDeleted == isGone ? "" : "not what was told";
                }});
  ASSERT_TRUE(DeleteRunValue());
}

void ClaimAndRelease() {
  ClaimInstance();
  ReleaseInstance();
}

TEST(FailingCallsTest, WithoutTheMutexThisIsNoFirstCopy) {
  FailEachCall({"instance", ClaimAndRelease, {"CreateMutexW"}});
  FailingImport mutexes({"CreateMutexW", 0, ERROR_ACCESS_DENIED});
  mutexes.Fail(1);
  EXPECT_FALSE(ClaimInstance());
  EXPECT_TRUE(ClaimInstance());
  ReleaseInstance();
}

TEST(FailingCallsTest, WithoutGdiPlusTheProgramIsToldSo) {
  for (const PlatformCall& call : {PlatformCall{"LoadLibraryW", 0, ERROR_MOD_NOT_FOUND},
                                   PlatformCall{"GdiplusStartup", 2, ERROR_SUCCESS}}) {
    ASSERT_TRUE(StartGdiplus());
    StopGdiplus();
    FailingImport start(call);
    start.Fail(1);
    EXPECT_FALSE(StartGdiplus()) << call.name;
  }
}

TEST(FailingCallsTest, AnOpenFileDialogThatDoesNotComeUpChoosesNothing) {
  const TestForm owner;
  FailingImport dialogs({"GetOpenFileNameW"});
  FailingImport folders({"GetCurrentDirectoryW"});
  FailingImport returns({"SetCurrentDirectoryW"});
  for (const int allowed : {2, 1, 0}) {
    dialogs.Fail(1);
    folders.Fail(allowed + 1, INT_MAX);
    returns.Fail(1);
    std::wstring folder = L"C:\\Music\\";
    EXPECT_EQ(BrowseForSource(owner.hwnd(), false, folder), std::nullopt);
    EXPECT_EQ(dialogs.Calls(), 1);
    EXPECT_EQ(folders.Calls(), 2);
    EXPECT_EQ(returns.Calls(), 1);
    EXPECT_EQ(folder, L"C:\\Music\\");
    EXPECT_TRUE(owner.Enabled());
  }
}

}  // namespace
}  // namespace tellurvane
