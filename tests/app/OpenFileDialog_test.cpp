#include "app/OpenFileDialog.h"

#include <commdlg.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "tests/support/FailingImport.h"

namespace tellurvane {
namespace {

std::wstring returnedName;
OPENFILENAMEW askedFor;
std::wstring askedFolder;

BOOL WINAPI Choose(OPENFILENAMEW* dialog) {
  askedFor = *dialog;
  askedFolder = dialog->lpstrInitialDir;
  returnedName.copy(dialog->lpstrFile, returnedName.size());
  return TRUE;
}

TEST(OpenFileDialog, TakesTheNameUpToTwoTerminatorsIfItIsOneName) {
  const std::wstring nul(1, L'\0');
  const struct {
    const char* what;
    std::wstring name;
    std::optional<std::wstring> path;
    std::wstring filesPath;
  } cases[] = {
      {"a path", L"C:\\Music\\a.mp3" + nul + nul + L"junk", L"C:\\Music\\a.mp3", L"C:\\Music\\"},
      {"a folder and a name", L"C:\\Music" + nul + L"a.mp3" + nul + nul, std::nullopt, L"D:\\"},
      {"nothing", L"", std::nullopt, L"D:\\"},
  };
  FailingImport dialog({"GetOpenFileNameW"});
  dialog.Replace(Choose);
  for (const auto& [what, name, path, folder] : cases) {
    returnedName = name;
    std::wstring filesPath = L"D:\\";
    EXPECT_EQ(BrowseForSource(nullptr, false, filesPath), path) << what;
    EXPECT_EQ(filesPath, folder) << what;
    EXPECT_EQ(askedFolder, L"D:\\");
    EXPECT_EQ(askedFor.Flags, 0x280804U);
    EXPECT_GE(askedFor.nMaxFile, 260U);
  }
}

}  // namespace
}  // namespace tellurvane
