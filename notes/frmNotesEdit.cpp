#include "notes/frmNotesEdit.h"

#include "notes/NoteText.h"
#include "ui/AccessibleObject.h"
#include "ui/DialogGrid.h"
#include "ui/ModTheme.h"

namespace tellurvane {
namespace {

// Twips.
constexpr int kWidth = 6'600;
constexpr int kHeight = 4'500;
constexpr int kLabelHeight = 300;
constexpr int kButtonHeight = 420;

constexpr Color kTooMuch = Adaptive(Rgb(0xC0, 0x10, 0x10), COLOR_BTNTEXT);

}  // namespace

frmNotesEdit::frmNotesEdit(std::wstring source, std::function<void(const std::wstring&)> write)
    : source_(std::move(source)), write_(std::move(write)) {}

void frmNotesEdit::Open(HWND owner) {
  Load(DialogArgs(L"Tellurvane", kWidth, kHeight, owner));
  Center();
  Form_Resize();
  picText_.box.SetFocus();
  ShowModal();
}

void frmNotesEdit::Form_Load() {
  picNote_.Create(hwnd(), ControlKind::kLabel, L"撰寫時請勿超過 8 行，每行限制字數為 21 字");
  // This kind scrolls; the other one takes no more text than it can show.
  picText_.control.Multilin(1);
  picText_.Create(hwnd(), ControlKind::kRichEditBox, L"");
  picText_.control.BorderStyle(1);
  picCount_.Create(hwnd(), ControlKind::kLabel, L"");
  picOK_.Create(hwnd(), ControlKind::kPushButton, L"確 定");
  picCancel_.Create(hwnd(), ControlKind::kPushButton, L"關 閉");
  NameByLabel(picText_.control.hwnd(), picNote_.control.hwnd());
  picNote_.control.ForeColor(ModTheme::kLabelInk);

  picText_.control.text(NoteTextWithBreaks(source_));
  opened_ = picText_.control.text();
  ShowExtent();
  picText_.control.Change = [this] { ShowExtent(); };
  picText_.control.KeyDown = [this](UINT key) { return picText_KeyDown(key); };
  picOK_.control.Click = [this] { cmdOk_Click(); };
  picCancel_.control.Click = [this] { cmdCancel_Click(); };
}

void frmNotesEdit::Form_Resize() {
  const int width = ScaleWidth();
  const int height = ScaleHeight();
  const int margin = PixelsFromTwips(DialogGrid::kMargin);
  const int labelHeight = PixelsFromTwips(kLabelHeight);
  const int buttonWidth = PixelsFromTwips(DialogGrid::kButtonWidth);
  const int buttonHeight = PixelsFromTwips(kButtonHeight);
  const int inside = width - 2 * margin;
  const int buttonY = height - margin - buttonHeight;
  const int textY = margin + labelHeight;
  picNote_.Move(margin, margin / 2, inside, labelHeight);
  picText_.Move(margin, textY, inside, buttonY - margin - textY);
  picCancel_.Move(width - margin - buttonWidth, buttonY, buttonWidth, buttonHeight);
  picOK_.Move(width - 2 * margin - 2 * buttonWidth, buttonY, buttonWidth, buttonHeight);
  picCount_.Move(margin, buttonY + (buttonHeight - labelHeight) / 2,
                 width - 4 * margin - 2 * buttonWidth, labelHeight);
}

bool frmNotesEdit::picText_KeyDown(UINT key) {
  if (key != VK_RETURN || GetKeyState(VK_CONTROL) >= 0) return false;
  cmdOk_Click();
  return true;
}

void frmNotesEdit::ShowExtent() {
  const NoteExtent extent = MeasureNote(picText_.control.text());
  const bool isTooMuch = extent.lines > kNoteLines || extent.longest > kNoteLineCharacters;
  picCount_.control.ForeColor(isTooMuch ? kTooMuch : ModTheme::kLabelInk);
  picCount_.control.text(std::to_wstring(extent.lines) + L" 行，最長 " +
                         std::to_wstring(extent.longest) + L" 字");
}

void frmNotesEdit::cmdOk_Click() {
  const std::wstring text = picText_.control.text();
  // The box may change unusual characters: a text that the user did not change is not written.
  if (!text.empty() && text != opened_) write_(StoredNoteText(text));
  cmdCancel_Click();
}

void frmNotesEdit::cmdCancel_Click() { Unload(); }

}  // namespace tellurvane
