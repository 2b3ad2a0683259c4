#include "tests/radio/RadioFixture.h"

#include <commctrl.h>

#include "base/PlatformText.h"
#include "tests/support/FormProbe.h"
#include "ui/Timer.h"

namespace tellurvane {

RadioCallbacks RadioFixture::Callbacks() {
  const auto read = [this](const std::wstring& key) {
    const auto found = settings.find(key);
    return found == settings.end() ? std::wstring() : found->second;
  };
  const auto write = [this](const std::wstring& key, const std::wstring& value) {
    written.emplace_back(key, value);
    settings[key] = value;
  };
  const auto fetchPage = [this](const std::wstring& url) {
    fetched.push_back(url);
    return fetch(url);
  };
  const auto search = [this](const DirectoryQuery& query) {
    asked.push_back(query);
    return searchRadioBrowser(query);
  };
  return {.readSetting = read,
          .writeSetting = write,
          .directories = {fetchPage, Capitals, hinetUrl, search}};
}

std::optional<std::wstring> RadioFixture::Play(const std::function<void()>& user) {
  frmRadioList dialog(Callbacks());
  Timer acting;
  acting.Interval(10);
  acting.Tick = [&] {
    if (!dialog.Visible()) return;
    acting.Enabled(false);
    window = dialog.hwnd();
    FindControls();
    if (!HasFatalFailure()) user();
    if (IsOpen()) PostMessageW(window, WM_CLOSE, 0, 0);
  };
  acting.Enabled(true);
  const auto chosen = dialog.Open(owner.hwnd());
  EXPECT_FALSE(dialog.IsLoaded());
  EXPECT_TRUE(owner.Enabled()) << "the owner can be used again";
  return chosen;
}

void RadioFixture::FindControls() {
  const std::map<std::wstring, HWND*> buttons = {{L"依類型搜尋", &optGenre},
                                                 {L"依關鍵字搜尋", &optKeyword},
                                                 {L"搜 尋", &cmdSearch},
                                                 {L"新 增", &cmdOk},
                                                 {L"關 閉", &cmdCancel}};
  for (const HWND button : InsideOf(window, L"Button")) *buttons.at(WindowText(button)) = button;
  const auto comboBoxes = InsideOf(window, L"ComboBox");
  ASSERT_EQ(comboBoxes.size(), 2U);
  const size_t source = EntriesOf(comboBoxes[0]).at(0) == L"SHOUTcast" ? 0 : 1;
  cboSource = comboBoxes[source];
  cboGenre = comboBoxes[1 - source];
  txtKeyword = InsideOf(window, L"Edit").at(0);
  list = InsideOf(window, WC_LISTVIEWW).at(0);
  lblStatus = LabelsOf(window).at(0);
  for (const NamedControl& each : Controls()) ASSERT_NE(each.control, nullptr) << each.name;
}

std::vector<NamedControl> RadioFixture::Controls() const {
  return {{cboSource, "source"},  {optGenre, "byGenre"},   {cboGenre, "genre"},
          {optKeyword, "byWord"}, {txtKeyword, "keyword"}, {cmdSearch, "search"},
          {list, "list"},         {cmdOk, "add"},          {cmdCancel, "close"}};
}

std::wstring RadioFixture::HinetPage(const Texts& titles) {
  std::wstring page;
  for (size_t i = 0; i < titles.size(); ++i) {
    page += L"<item id=\"" + std::to_wstring(i) + L"\" myTitle=\"" + titles[i] + L"\"/>";
  }
  return page;
}

}  // namespace tellurvane
