// Settings, mutex and GDI+ when a call fails.
#include <windows.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "app/ModGeneral.h"
#include "app/SettingsFile.h"
#include "base/FatalError.h"
#include "tests/support/EachCallFails.h"
#include "tests/support/FailingImport.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/WholeSettings.h"

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
    return ReadBytes(Path()) == With(isWritten_ ? L"50" : L"37") ? "" : "wrong settings";
  }

 private:
  std::wstring Path() const { return folder_->File(L"Setting.ini"); }

  std::unique_ptr<TemporaryFolder> folder_;
  bool isWritten_ = false;
};

TEST(FailingCallsTest, TheSettingsAreReadAndWrittenOrUnchanged) {
  SettingsScenario scenario;
  FailEachCall({"settings",
                [&] { scenario.ReadAndWrite(); },
                {"CreateFileW", "GetPrivateProfileStringW", "WritePrivateProfileStringW"},
                [&] { scenario.Prepare(); },
                [&] { return scenario.Fault(); }});
}

TEST(FailingCallsTest, WithoutTheMutexTheProgramDoesNotStart) {
  FailingImport mutexes({"CreateMutexW", 0, ERROR_ACCESS_DENIED});
  mutexes.Fail(1);
  EXPECT_FALSE(ClaimInstance());
  EXPECT_TRUE(ClaimInstance());
  ReleaseInstance();
}

TEST(FailingCallsTest, AMissingIconIsFatal) {
  const TemporaryFolder folder;
  WriteBytes(folder.File(L"Setting.ini"), With(L"37"));
  ModGeneral general(folder.Path());
  FailingImport resources({"FindResourceW"});
  resources.Fail(7);
  EXPECT_THROW(general.LoadIcons(), FatalError);
  EXPECT_EQ(resources.Calls(), 7);
}

TEST(FailingCallsTest, ReportsThatGdiPlusIsNotAvailable) {
  for (const PlatformCall& call : {PlatformCall{"LoadLibraryW", 0, ERROR_MOD_NOT_FOUND},
                                   PlatformCall{"GdiplusStartup", 2, ERROR_SUCCESS}}) {
    ASSERT_TRUE(StartGdiplus());
    StopGdiplus();
    FailingImport start(call);
    start.Fail(1);
    EXPECT_FALSE(StartGdiplus()) << call.name;
  }
}

}  // namespace
}  // namespace tellurvane
