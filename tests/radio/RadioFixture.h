// The radio directory's dialog in its modal loop, with pages that the test makes up.
#pragma once

#include <gmock/gmock.h>

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "radio/frmRadioList.h"
#include "tests/support/DialogTestSupport.h"
#include "tests/support/GdiPlusSession.h"
#include "tests/support/WindowTestSupport.h"

namespace tellurvane {

class RadioFixture : public testing::Test {
 protected:
  using Texts = std::vector<std::wstring>;

  // Opens the dialog, lets the user act, and closes it if it is still open. Returns what was
  // chosen.
  std::optional<std::wstring> Play(const std::function<void()>& user);

  bool IsOpen() const { return IsWindow(window) != FALSE; }
  std::wstring Status() const { return WindowText(lblStatus); }
  // The names of the controls that can be used, in the order of the screen.
  std::string Usable() const { return UsableAmong(Controls(), window); }
  // The name of the control that has the keyboard.
  std::string Focused() const { return FocusedAmong(Controls()); }
  static void Click(HWND button) { ClickButton(button); }
  void Press(UINT key) const { PressKey(window, key); }
  static void Choose(HWND comboBox, int entry) { ChooseEntry(comboBox, entry); }
  void Type(const std::wstring& keyword) const { SetWindowTextW(txtKeyword, keyword.c_str()); }
  void Search() const { Click(cmdSearch); }
  void SearchHinet() const {
    Choose(cboSource, 3);
    Search();
  }
  void SelectRow(int row) const { SelectListRow(list, row); }
  int RowCount() const { return ListRowCount(list); }

  // Stations of HiNet, each by its title; the ids count from 0.
  static std::wstring HinetPage(const Texts& titles);

  std::map<std::wstring, std::wstring> settings;
  std::vector<std::pair<std::wstring, std::wstring>> written;
  std::function<std::wstring(const std::wstring& url)> fetch = [](const std::wstring&) {
    return HinetPage({L"甲", L"乙", L"丙"});
  };
  Texts fetched;
  std::function<StationSearch(const DirectoryQuery& query)> searchRadioBrowser =
      [](const DirectoryQuery&) { return StationSearch(); };
  std::vector<DirectoryQuery> asked;  // of Radio Browser
  std::wstring hinetUrl = L"mms://host/";

  GdiPlusSession gdiPlus;
  TestForm owner;
  // Of the open dialog; the handles stay when it is closed.
  HWND window = nullptr;
  HWND cboSource = nullptr;
  HWND optGenre = nullptr;
  HWND cboGenre = nullptr;
  HWND optKeyword = nullptr;
  HWND txtKeyword = nullptr;
  HWND cmdSearch = nullptr;
  HWND list = nullptr;
  HWND lblStatus = nullptr;
  HWND cmdOk = nullptr;
  HWND cmdCancel = nullptr;

 private:
  RadioCallbacks Callbacks();
  std::vector<NamedControl> Controls() const;
  void FindControls();
};

}  // namespace tellurvane
