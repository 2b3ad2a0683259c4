// The radio directory's dialog in its modal loop, with pages that the test makes up.
#pragma once

#include <gmock/gmock.h>

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "radio/frmRadioList.h"
#include "tests/support/DialogTestSupport.h"
#include "tests/support/GdiPlusSession.h"
#include "tests/support/WindowTestSupport.h"

namespace tellurvane {

class RadioTest : public testing::Test {
 protected:
  using Texts = std::vector<std::wstring>;

  // Opens the dialog and has the user act. He closes it at the end when it is still open. Returns
  // what was chosen.
  std::optional<std::wstring> Play(const std::function<void()>& user);

  bool IsOpen() const { return IsWindow(window) != FALSE; }
  std::wstring Status() const { return WindowText(lblStatus); }
  // The names of the controls that can be used, in the order of the screen.
  std::string Usable() const { return UsableAmong(Controls(), window); }
  // The name of what has the keyboard.
  std::string Focused() const { return FocusedAmong(Controls()); }
  // Presses a button or an option, which has to be usable.
  static void Click(HWND button) { ClickButton(button); }
  // A key goes the way of all messages, to whatever has the keyboard.
  void Press(UINT key) const { PressKey(window, key); }
  // Chooses an entry of a drop-down list by its keys.
  static void Choose(HWND comboBox, int entry) { ChooseEntry(comboBox, entry); }
  void Type(const std::wstring& keyword) const { SetWindowTextW(txtKeyword, keyword.c_str()); }
  void Search() const { Click(cmdSearch); }
  void SelectRow(int row) const { SelectListRow(list, row); }
  int RowCount() const { return ListRowCount(list); }
  std::wstring Cell(int row, int column) const { return ListCell(list, row, column); }
  static Texts Entries(HWND comboBox) { return EntriesOf(comboBox); }
  static int Entry(HWND comboBox) { return ChosenEntry(comboBox); }

  // Stations of HiNet, each by its title; the ids count from 0.
  static std::wstring HinetPage(const Texts& titles);
  void ChooseHinet() const { Choose(cboSource, 3); }

  std::map<std::wstring, std::wstring> settings;
  std::vector<std::pair<std::wstring, std::wstring>> written;
  std::function<std::wstring(const std::wstring& url)> fetch;  // "" while none is set
  Texts fetched;
  std::wstring hinetUrl = L"mms://host/";

  GdiPlusSession gdiPlus;
  TestForm owner;
  // Of the open dialog; the handles stay when it is closed.
  frmRadioList* dialog = nullptr;
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
  std::vector<NamedControl> Controls() const;
  RadioServices Services();
  void FindControls();
};

}  // namespace tellurvane
