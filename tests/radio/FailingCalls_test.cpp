// The radio directory while calls of the platform fail.
#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include <string>

#include "base/PlatformText.h"
#include "radio/DirectoryError.h"
#include "radio/HttpGetText.h"
#include "radio/StationXml.h"
#include "radio/frmRadioList.h"
#include "tests/support/ActingForm.h"
#include "tests/support/DialogTestSupport.h"
#include "tests/support/EachCallFails.h"
#include "tests/support/GdiPlusSession.h"
#include "ui/Com.h"

namespace tellurvane {
namespace {

void SearchAndChoose(const frmRadioList& dialog) {
  const HWND window = dialog.hwnd();
  const HWND source = InsideOf(window, L"ComboBox").at(0);
  SendMessageW(source, CB_SETCURSEL, 3, 0);
  SendMessageW(GetParent(source), WM_COMMAND, MAKEWPARAM(0, CBN_SELCHANGE),
               reinterpret_cast<LPARAM>(source));
  PressButton(window, L"搜 尋");
  SelectListRow(InsideOf(window, WC_LISTVIEWW).at(0), 1);
  PressButton(window, L"新 增");
  EndDialogWindow(window);
}

void UseDirectory() {
  const GdiPlusSession gdiPlus;
  ActingForm owner;
  const auto fetch = [](const std::wstring&) {
    return L"<item id=\"0\" myTitle=\"甲\"/><item id=\"1\" myTitle=\"乙\"/>";
  };
  frmRadioList dialog({.readSetting = [](const std::wstring&) { return L""; },
                       .writeSetting = [](const std::wstring&, const std::wstring&) {},
                       .directories = {fetch, Capitals, L"mms://host/"}});
  owner.ActLater([&] { SearchAndChoose(dialog); });
  EXPECT_EQ(dialog.Open(owner.hwnd()), L"mms://host/1");
}

void FetchPage() {
  const ComApartment apartment;
  try {
    HttpGetText(L"http://127.0.0.1:9/");
    ADD_FAILURE() << "nobody listens there";
  } catch (const FetchError&) {
    return;
  }
}

void ReadStations() {
  const ComApartment apartment;
  try {
    EXPECT_EQ(ReadStationXml("<result><station/></result>").size(), 1U);
  } catch (const DirectoryError& error) {
    EXPECT_FALSE(error.Text().empty());
  }
}

TEST(FailingCallsTest, TheDirectoryIsSearchedOrEndsInAFatalError) {
  FailEachCall({"radio directory", UseDirectory, {"CreateWindowExW"}});
}

TEST(FailingCallsTest, APageThatCannotBeAskedForIsNotFetched) {
  FailEachCall({"fetch", FetchPage, {"CLSIDFromProgID", "CoCreateInstance"}});
}

TEST(FailingCallsTest, AnAnswerThatCannotBeReadHasAReason) {
  FailEachCall({"read", ReadStations, {"CLSIDFromProgID", "CoCreateInstance"}});
}

}  // namespace
}  // namespace tellurvane
