#include "tests/scheduler/EditorFixture.h"

#include <commctrl.h>
#include <oleauto.h>
#include <richedit.h>

#include <utility>

#include "base/PlatformText.h"
#include "base/Text.h"
#include "tests/support/ActingForm.h"
#include "tests/support/FormProbe.h"

namespace tellurvane {
TaskRecord EditorFixture::Task(const std::wstring& name, std::int32_t mediaType,
                               const std::wstring& source) {
  TaskRecord task;
  task.Name = name;
  task.MediaType = mediaType;
  task.Source = source;
  task.Enabled = true;
  task.Interval = 5;
  task.NextRun = At(2011, 2, 14, 13);
  return task;
}

EditorCallbacks EditorFixture::Callbacks() {
  return {
      .browseForSource =
          [this](bool wantExecutables) {
            called.emplace_back(wantExecutables ? "programs" : "music");
            if (whileBrowsing) whileBrowsing();
            return offered;
          },
      .chooseStation =
          [this](HWND) {
            called.emplace_back("stations");
            return offered;
          },
      .editNote =
          [this](HWND, const std::wstring& text) {
            called.emplace_back("note");
            noteGiven = text;
            return offered;
          },
      .ask =
          [this](HWND asking, const std::wstring& text, UINT flags) {
            EXPECT_EQ(asking, window);
            asked.push_back({text, flags});
            if (whileAsking) whileAsking();
            return answer;
          },
      .noteForScreen = [](const std::wstring& text) { return Replaced(text, L"\\r\\n", L"\r\n"); },
      .noteForList = [](const std::wstring& text) { return Replaced(text, L"\r\n", L"\\r\\n"); }};
}

void EditorFixture::Play(std::optional<size_t> element, const std::function<void()>& user) {
  ActingForm form;
  owner = &form;
  FrmSet editor(
      tasks,
      {.clock = [this] { return now; },
       .pathExists = [this](const std::wstring&) { return doPathsExist; },
       .isSameName = EqualsIgnoringCase},
      [this] { ++saves; }, Callbacks());
  form.ActLater([&] {
    window = editor.hwnd();
    FindControls();
    Pump();
    if (!HasFatalFailure()) user();
    if (IsOpen()) Click(cmdCancel);
    // A broken editor would be waited for in vain.
    if (IsOpen()) DestroyWindow(window);
  });
  editor.Open(form.hwnd(), element);
  EXPECT_TRUE(IsWindowEnabled(form.hwnd())) << "the owner can be used again";
  owner = nullptr;
}

void EditorFixture::Browse(size_t row, const std::function<void()>& user) {
  Play(row, [&] {
    Click(cmdCancelJob);
    user();
  });
}

void EditorFixture::FindControls() {
  ASSERT_TRUE(IsWindowVisible(window)) << "the editor is not open";
  const auto pair = [this](const wchar_t* windowClass, HWND& first, HWND& second) {
    const auto found = InsideOf(window, windowClass);
    ASSERT_EQ(found.size(), 2U) << "two of a kind";
    first = found[0];
    second = found[1];
  };
  list = InsideOf(window, WC_LISTVIEWW).at(0);
  txtSrc = InsideOf(window, L"RichEdit20W").at(0);
  pair(L"Edit", txtName, txtInterval);
  pair(L"ComboBox", cboMediaType, cboTimeType);
  pair(DATETIMEPICK_CLASSW, dtpDate, dtpTime);
  const auto labels = LabelsOf(window);
  ASSERT_EQ(labels.size(), 6U);
  lblSource = labels[2];
  lblInterval = labels[5];
  const auto buttons = InsideOf(window, L"Button");
  HWND* const places[] = {&cmdNew,     &cmdEdit,      &cmdDel,  &cmdFiles, &chkEnabled,
                          &cmdSaveJob, &cmdCancelJob, &cmdSave, &cmdCancel};
  ASSERT_EQ(buttons.size(), std::size(places));
  for (size_t i = 0; i < buttons.size(); ++i) *places[i] = buttons[i];
}

std::vector<NamedControl> EditorFixture::Controls() const {
  return {{list, "list"},          {cmdNew, "new"},          {cmdEdit, "edit"},
          {cmdDel, "remove"},      {txtName, "name"},        {cboMediaType, "media"},
          {txtSrc, "source"},      {cmdFiles, "..."},        {dtpDate, "date"},
          {dtpTime, "time"},       {cboTimeType, "unit"},    {txtInterval, "interval"},
          {chkEnabled, "enabled"}, {cmdSaveJob, "saveTask"}, {cmdCancelJob, "cancelTask"},
          {cmdSave, "close"},      {cmdCancel, "cancel"}};
}

std::string EditorFixture::Writable() const {
  std::string names;
  for (const NamedControl& each : Controls()) {
    bool isReadOnly = (GetWindowLongPtrW(each.control, GWL_STYLE) & ES_READONLY) != 0;
    if (each.control == txtSrc) {
      isReadOnly = (SendMessageW(txtSrc, EM_GETOPTIONS, 0, 0) & ECO_READONLY) != 0;
    } else if (each.control != txtName && each.control != txtInterval) {
      continue;
    }
    if (!isReadOnly) (names += names.empty() ? "" : " ") += each.name;
  }
  return names;
}

void EditorFixture::Pick(DateSerial date, std::optional<DateSerial> time) const {
  for (const auto& [picker, moment] :
       {std::pair{dtpDate, date}, std::pair{dtpTime, time.value_or(date)}}) {
    SYSTEMTIME picked = {};
    VariantTimeToSystemTime(moment, &picked);
    SendMessageW(picker, DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&picked));
  }
}

DateSerial EditorFixture::Picked() const {
  SYSTEMTIME date = {};
  SYSTEMTIME time = {};
  SendMessageW(dtpDate, DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&date));
  SendMessageW(dtpTime, DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&time));
  return At(date.wYear, date.wMonth, date.wDay, time.wHour, time.wMinute, time.wSecond);
}

int EditorFixture::SelectedRow() const {
  return static_cast<int>(
      SendMessageW(list, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
}

std::vector<std::wstring> EditorFixture::Rows() const {
  std::vector<std::wstring> rows;
  for (int row = 0; row < ListRowCount(list); ++row) rows.push_back(ListCell(list, row));
  return rows;
}

std::vector<std::wstring> EditorFixture::Captions(const std::vector<HWND>& controls) {
  std::vector<std::wstring> captions;
  for (const HWND control : controls) captions.push_back(WindowText(control));
  return captions;
}

}  // namespace tellurvane
