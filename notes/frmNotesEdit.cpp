#include "notes/frmNotesEdit.h"

#include <algorithm>
#include <utility>

#include "notes/NoteText.h"
#include "ui/Twips.h"

namespace tellurvane {
namespace {

// Twips.
constexpr int kWidth = 6'600;
constexpr int kHeight = 4'500;
constexpr int kMargin = 180;
constexpr int kLabelHeight = 300;
constexpr int kButtonWidth = 1'350;
constexpr int kButtonHeight = 420;

constexpr Color kGround = Rgb(0xF4, 0xF1, 0xFA);
constexpr Color kInk = Rgb(0x4B, 0x00, 0x82);
constexpr Color kTooMuch = Rgb(0xC0, 0x10, 0x10);

}  // namespace

frmNotesEdit::frmNotesEdit(std::wstring source, std::function<void(const std::wstring&)> write)
    : source_(std::move(source)), write_(std::move(write)) {}

void frmNotesEdit::Open(HWND owner) {
  Load({.caption = L"Tellurvane",
        .border = FormBorder::kFixedDialog,
        .widthTwips = kWidth,
        .heightTwips = kHeight,
        .backColor = kGround,
        .owner = owner,
        .icon = LoadIconW(GetModuleHandleW(nullptr), L"AAA"),
        .className = L"TellurvaneForm"});
  Center();
  Form_Resize();
  picText_.SetFocus();
  ShowModal();
}

void frmNotesEdit::AddControl(clsControl& control, PictureBox& box, ControlKind kind,
                              const wchar_t* text) {
  box.Create({.parent = hwnd(), .backColor = kGround});
  control.TargetPictureBox(box);
  control.Create(kind);
  control.text(text);
}

void frmNotesEdit::Form_Load() {
  AddControl(note_, picNote_, ControlKind::kLabel, L"撰寫時請勿超過 8 行，每行限制字數為 21 字");
  // The kind that scrolls: the other one takes no more than it can show.
  text_.Multilin(1);
  AddControl(text_, picText_, ControlKind::kRichEditBox, L"");
  text_.BorderStyle(1);
  AddControl(count_, picCount_, ControlKind::kLabel, L"");
  AddControl(ok_, picOK_, ControlKind::kPushButton, L"確 定");
  AddControl(cancel_, picCancel_, ControlKind::kPushButton, L"關 閉");
  note_.ForeColor(kInk);

  text_.text(NoteTextWithBreaks(source_));
  opened_ = text_.text();
  ShowExtent();
  text_.Change = [this] { ShowExtent(); };
  text_.KeyDown = [this](UINT key) { return picText_KeyDown(key); };
  ok_.Click = [this] { cmdOk_Click(); };
  cancel_.Click = [this] { cmdCancel_Click(); };
}

void frmNotesEdit::Form_Resize() {
  const int width = ScaleWidth();
  const int height = ScaleHeight();
  const int margin = PixelsFromTwipsX(kMargin);
  const int labelHeight = PixelsFromTwipsY(kLabelHeight);
  const int buttonWidth = PixelsFromTwipsX(kButtonWidth);
  const int buttonHeight = PixelsFromTwipsY(kButtonHeight);
  const int inside = std::max(width - 2 * margin, 0);
  const int buttonY = height - margin - buttonHeight;
  const int textY = margin + labelHeight;
  picNote_.Move(margin, margin / 2, inside, labelHeight);
  picText_.Move(margin, textY, inside, std::max(buttonY - margin - textY, 0));
  picCancel_.Move(width - margin - buttonWidth, buttonY, buttonWidth, buttonHeight);
  picOK_.Move(width - 2 * margin - 2 * buttonWidth, buttonY, buttonWidth, buttonHeight);
  picCount_.Move(margin, buttonY + (buttonHeight - labelHeight) / 2,
                 std::max(width - 4 * margin - 2 * buttonWidth, 0), labelHeight);
}

bool frmNotesEdit::picText_KeyDown(UINT key) {
  if (key != VK_RETURN || GetKeyState(VK_CONTROL) >= 0) return false;
  cmdOk_Click();
  return true;
}

// Advice only: nothing keeps the user from going beyond.
void frmNotesEdit::ShowExtent() {
  const NoteExtent extent = MeasureNote(text_.text());
  const bool isTooMuch = extent.lines > kNoteLines || extent.longest > kNoteLineCharacters;
  count_.ForeColor(isTooMuch ? kTooMuch : kInk);
  count_.text(std::to_wstring(extent.lines) + L" 行，最長 " + std::to_wstring(extent.longest) +
              L" 字");
}

void frmNotesEdit::cmdOk_Click() {
  const std::wstring text = text_.text();
  // What was not touched stays as it is, to the last byte: the box may have its own view of unusual
  // characters.
  if (!text.empty() && text != opened_) write_(StoredNoteText(text));
  cmdCancel_Click();
}

void frmNotesEdit::cmdCancel_Click() { Unload(); }

}  // namespace tellurvane
