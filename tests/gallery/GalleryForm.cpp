#include "GalleryForm.h"

#include "ui/Density.h"
#include "ui/ModTheme.h"
#include "ui/clsPopupMenu.h"

namespace tellurvane {
namespace {

const std::wstring kTitle = L"Tellurvane 控制項展示";

constexpr Color kGround = 0xF4F4F4;
constexpr Color kGreyText = 0x979797;
constexpr int kRows = 1'000;
constexpr int kRowHeight = 24;

// Designed on a screen of 96 dpi; follows a denser one.
int Px(int pixels) { return Scaled(pixels); }

std::wstring RowText(int row) {
  return L"第 " + std::to_wstring(row + 1) + L" 個排程專案：每天早上播放新聞";
}

}  // namespace

void GalleryForm::Form_Load() {
  ResizeInside(Px(900), Px(600));
  MakeToolbar();
  MakeControls();
  MakeSliders();
  MakeDates();
  MakeList();
  report_.Create({.parent = hwnd(),
                  .x = Px(10),
                  .y = Px(572),
                  .width = Px(880),
                  .height = Px(24),
                  .backColor = kGround});
  report_.Paint = [this](HDC target) { ModTheme::Text(target, reported_, 2, 2, {}, {.size = 13}); };
  reported_ = L"按一下任何控制項試試看";
  report_.Redraw();
}

bool GalleryForm::Form_Unload() {
  PostQuitMessage(0);
  return true;
}

void GalleryForm::Report(const std::wstring& what) {
  reported_ = what;
  report_.Redraw();
  // Scripts read the caption.
  SetWindowTextW(hwnd(), (kTitle + (L"：" + what)).c_str());
}

void GalleryForm::MakeToolbar() {
  toolbarHost_.Create({.parent = hwnd(),
                       .x = Px(10),
                       .y = Px(6),
                       .width = Px(420),
                       .height = Px(30),
                       .backColor = kGround});
  toolbar_.TargetPictureBox(toolbarHost_);
  toolbar_.Create(16);
  const UniqueBitmap images(static_cast<HBITMAP>(
      LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(101), IMAGE_BITMAP, 0, 0, 0)));
  toolbar_.AddBitmap(images.Get(), kWhite);
  int image = 0;
  for (const wchar_t* const text : {L"新 增", L"播 放", L"停 止", L"設 定", L"離 開"}) {
    toolbar_.AddButton(image++, text, text);
  }
  toolbar_.Enabled(3, false);
  toolbar_.ButtonClick = [this](int id) { ToolBar_ButtonClick(id); };
}

void GalleryForm::ToolBar_ButtonClick(int id) {
  Report(L"按了工具列的第 " + std::to_wstring(id) + L" 個按鈕");
  if (id == 4) ShowMenu();
  if (id == 5) Unload();
}

void GalleryForm::ShowMenu() {
  clsPopupMenu menu;
  menu.AddMenuItem(L"開啟連續播放音樂", MF_STRING, 1);
  menu.AddMenuItem(L"關閉 Windows 啟動後自動執行", MF_CHECKED, 2);
  menu.AddMenuItem(L"", MF_SEPARATOR, 0);
  menu.AddMenuItem(L"顯示小時鐘", MF_STRING, 3);
  menu.SetMenuDefItem(0);
  Report(L"選了選單的第 " + std::to_wstring(menu.TrackMenu(hwnd())) + L" 項");
}

GalleryForm::Hosted& GalleryForm::AddControl(ControlKind kind, int x, int y, int width, int height,
                                             const std::wstring& text) {
  Hosted& hosted = controls_.emplace_back();
  hosted.host.Create({.parent = hwnd(),
                      .x = Px(x),
                      .y = Px(y),
                      .width = Px(width),
                      .height = Px(height),
                      .backColor = kGround});
  hosted.control.TargetPictureBox(hosted.host);
  hosted.control.Create(kind);
  if (!text.empty()) hosted.control.text(text);
  hosted.control.Click = [this, &control = hosted.control] {
    const int chosen = control.ListIndex();
    Report(L"按了「" + (chosen < 0 ? control.text() : control.List(chosen)) + L"」");
  };
  return hosted;
}

void GalleryForm::MakeControls() {
  const struct {
    ControlKind kind;
    int height;
    const wchar_t* text;
  } rows[] = {
      {ControlKind::kLabel, 18, L"排程類型（標籤，較長的中文說明）"},
      {ControlKind::kCheckBox, 20, L"儲存後立即啟動音樂排程"},
      {ControlKind::kOptionButton, 20, L"依照類型搜尋電台"},
      {ControlKind::kPushButton, 26, L"確 定"},
      {ControlKind::kEditBox, 22, L"新的排程專案"},
      {ControlKind::kEditableComboBox, 26, L"可以輸入的清單"},
      {ControlKind::kDropDownList, 26, L""},
  };
  int y = 46;
  for (const auto& row : rows) {
    for (const bool isEnabled : {true, false}) {
      Hosted& hosted = AddControl(row.kind, isEnabled ? 10 : 240, y, 220, row.height, row.text);
      for (const wchar_t* const item : {L"網路電台", L"本地音樂", L"應用程式", L"記事提醒"}) {
        hosted.control.AddItem(item);
      }
      if (row.kind == ControlKind::kDropDownList) hosted.control.ListIndex(1);
      if (row.kind == ControlKind::kEditBox) hosted.control.BorderStyle(1);
      hosted.control.Checked(isEnabled);
      hosted.control.Enabled(isEnabled);
    }
    y += row.height + 6;
  }
  MakeLists(y + 4);
  MakeNote(y + 130);
}

void GalleryForm::MakeLists(int y) {
  int x = 10;
  for (const ControlKind kind :
       {ControlKind::kListBox, ControlKind::kMultiSelectListBox, ControlKind::kToggleSelectListBox,
        ControlKind::kSortedListBox, ControlKind::kSimpleComboBox}) {
    Hosted& hosted = AddControl(kind, x, y, 84, 116, L"");
    for (const wchar_t* const item : {L"古典音樂", L"爵士音樂", L"搖滾音樂", L"世界音樂"}) {
      hosted.control.AddItem(item);
    }
    hosted.control.ListIndex(1);
    if (kind != ControlKind::kSimpleComboBox) hosted.control.BorderStyle(1);
    x += 91;
  }
}

void GalleryForm::MakeNote(int y) {
  Hosted& note = controls_.emplace_back();
  note.host.Create({.parent = hwnd(),
                    .x = Px(10),
                    .y = Px(y),
                    .width = Px(450),
                    .height = Px(558 - y),
                    .backColor = kGround});
  note.control.TargetPictureBox(note.host);
  note.control.Multilin(1);
  note.control.Create(ControlKind::kRichEditBox);
  note.control.BorderStyle(1);
  note.control.text(L"起來走一走\r\n順便喝杯水，看看窗外的風景。");
}

void GalleryForm::AddSlider(int x, int y, int width, double value, bool isEnabled) {
  PictureBox& host = sliderHosts_.emplace_back();
  host.Create({.parent = hwnd(),
               .x = Px(x),
               .y = Px(y),
               .width = Px(width),
               .height = Px(18),
               .backColor = kGround,
               .isTabStop = true});
  clsProgress& slider = sliders_.emplace_back();
  slider.TargetPictureBox(host);
  slider.Create();
  slider.Max(100);
  slider.PostRender = [&slider](bool) {
    slider.PrintText(std::to_wstring(static_cast<int>(slider.Value())) + L" %", kGreyText);
  };
  slider.Value(value);
  slider.Enabled(isEnabled);
  slider.PositionSetByMouse = [this](double now) {
    Report(L"滑桿：" + std::to_wstring(static_cast<int>(now)));
  };
}

void GalleryForm::MakeSliders() {
  AddSlider(480, 46, 70, 80, true);
  AddSlider(558, 46, 330, 37.5, true);
  AddSlider(480, 70, 70, 0, true);
  AddSlider(558, 70, 330, 62, false);
}

void GalleryForm::MakeDates() {
  const auto now = SerialFromCivil({2026, 11, 21, 9, 5, 7});
  for (size_t i = 0; i < dates_.size(); ++i) {
    const bool isDate = i % 2 == 0;
    dates_[i].Create(hwnd(), Px(isDate ? 480 : 700), Px(i < 2 ? 98 : 126), Px(isDate ? 210 : 188),
                     Px(24), isDate);
    dates_[i].Value(*now);
    dates_[i].Enabled(i < 2);
  }
}

void GalleryForm::MakeList() {
  listHost_.Create(
      {.parent = hwnd(), .x = Px(480), .y = Px(320), .width = Px(408), .height = Px(246)});
  list_.Create(listHost_);
  list_.ColumnAdd(L"專案名稱", Px(380));
  list_.RowHeight(Px(kRowHeight));
  list_.OnData = [this](int row, int, LVITEMW& cell) { list_.GiveText(cell, RowText(row)); };
  list_.ItemActivate = [this](int row) { Report(L"啟動「" + RowText(row) + L"」"); };
  list_.ListCount(kRows);
  list_.SetSelectList(2);
}

}  // namespace tellurvane
