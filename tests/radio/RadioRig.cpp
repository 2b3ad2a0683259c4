#include "tests/radio/RadioRig.h"

#include <commctrl.h>

#include "base/PlatformText.h"
#include "tests/support/FormProbe.h"
#include "ui/Timer.h"

namespace tellurvane {

RadioServices RadioTest::Services() {
  return {.readSetting =
              [this](const std::wstring& key) {
                const auto found = settings.find(key);
                return found == settings.end() ? std::wstring() : found->second;
              },
          .writeSetting =
              [this](const std::wstring& key, const std::wstring& value) {
                written.emplace_back(key, value);
                settings[key] = value;
              },
          .directories = {.fetch =
                              [this](const std::wstring& url) {
                                fetched.push_back(url);
                                return fetch ? fetch(url) : std::wstring();
                              },
                          .toCapitals = Capitals,
                          .hinetUrl = hinetUrl}};
}

std::optional<std::wstring> RadioTest::Play(const std::function<void()>& user) {
  frmRadioList made(Services());
  dialog = &made;
  Timer acting;
  acting.Interval(10);
  acting.Tick = [&] {
    if (!made.Visible()) return;
    acting.Enabled(false);
    FindControls();
    if (!HasFatalFailure()) user();
    if (IsOpen()) PostMessageW(window, WM_CLOSE, 0, 0);
  };
  acting.Enabled(true);
  const auto chosen = made.Open(owner.hwnd());
  EXPECT_FALSE(made.IsLoaded());
  EXPECT_TRUE(owner.Enabled()) << "the owner can be used again";
  dialog = nullptr;
  return chosen;
}

void RadioTest::FindControls() {
  window = dialog->hwnd();
  const auto buttons = InsideOf(window, L"Button");
  HWND* const places[] = {&optGenre, &optKeyword, &cmdSearch, &cmdOk, &cmdCancel};
  ASSERT_EQ(buttons.size(), std::size(places));
  for (size_t i = 0; i < buttons.size(); ++i) *places[i] = buttons[i];
  const auto comboBoxes = InsideOf(window, L"ComboBox");
  ASSERT_EQ(comboBoxes.size(), 2U);
  cboSource = comboBoxes[0];
  cboGenre = comboBoxes[1];
  txtKeyword = InsideOf(window, L"Edit").at(0);
  list = InsideOf(window, WC_LISTVIEWW).at(0);
  const auto labels = LabelsOf(window);
  ASSERT_EQ(labels.size(), 1U);
  lblStatus = labels[0];
}

std::vector<NamedControl> RadioTest::Controls() const {
  return {{cboSource, "source"},  {optGenre, "byGenre"},   {cboGenre, "genre"},
          {optKeyword, "byWord"}, {txtKeyword, "keyword"}, {cmdSearch, "search"},
          {list, "list"},         {cmdOk, "add"},          {cmdCancel, "close"}};
}

std::wstring RadioTest::HinetPage(const Texts& titles) {
  std::wstring page;
  for (size_t i = 0; i < titles.size(); ++i) {
    page += L"<item id=\"" + std::to_wstring(i) + L"\" myTitle=\"" + titles[i] + L"\"/>";
  }
  return page;
}

}  // namespace tellurvane
