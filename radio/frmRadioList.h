// The radio directory: searches one of the directories for a station that a task will play.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <string>

#include "radio/DirectorySearch.h"
#include "ui/BoxedControl.h"
#include "ui/Form.h"
#include "ui/PictureBox.h"
#include "ui/clsLictView.h"

namespace tellurvane {

// All must be set.
struct RadioCallbacks {
  // A setting by its key; empty when there is none.
  std::function<std::wstring(const std::wstring& key)> readSetting;
  std::function<void(const std::wstring& key, const std::wstring& value)> writeSetting;
  // `fetch` throws FetchError, `searchRadioBrowser` throws DirectoryError.
  DirectoryCallbacks directories;
};

class frmRadioList final : public Form {
 public:
  explicit frmRadioList(RadioCallbacks callbacks);

  // Returns the chosen station's stream address when the dialog is closed; nothing when none was
  // chosen.
  std::optional<std::wstring> Open(HWND owner);

 private:
  void Form_Load() override;
  void Form_Resize() override;
  LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  void Form_Enter() override;
  void Form_Escape() override { cmdCancel_Click(); }

  void CreateSearch();
  void CreateList();
  void NameFields();
  void ReadSettings();

  void cmbRadioType_Click();
  void SearchType_Click(SearchMode mode);
  void cmdSearch_Click();
  void cmdOk_Click();
  void cmdCancel_Click();
  void ListView_DblClick() { cmdOk_Click(); }
  void ListView_OnData(int row, int column, LVITEMW& cell);
  void ListView_CustomDraw(NMLVCUSTOMDRAW& draw, LRESULT& result);

  DirectorySource Source() const;
  DirectoryQuery Query() const;
  void Search(const DirectoryQuery& query);
  void LockControls(bool locked);
  LRESULT KeepOwnFocus(WPARAM wParam, LPARAM lParam);
  void RestoreFocus(HWND focus);
  void EnableSearchControls();
  void ShowMode();
  void Show(StationSearch search);
  void Say(const std::wstring& text) { picStatus_.control.text(text); }

  RadioCallbacks callbacks_;
  StationRows rows_;
  SearchMode mode_ = SearchMode::kGenre;
  bool isSearching_ = false;
  bool hadOwnFocus_ = false;  // before another window became active
  std::optional<std::wstring> chosen_;

  BoxedControl picRadioType_;
  BoxedControl picSearch1_;  // the option to search by genre
  BoxedControl picGenre_;
  BoxedControl picSearchKeyword_;
  BoxedControl picEdit_;
  BoxedControl picSearch_;
  PictureBox PicListView_;
  clsLictView list_;
  BoxedControl picStatus_;
  BoxedControl picOK_;
  BoxedControl picCancel_;
};

}  // namespace tellurvane
