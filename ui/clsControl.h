// One native control in a host picture box: a button, a label, a box to type in, or a list.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <string>

#include "ui/Color.h"
#include "ui/GXISubclass.h"
#include "ui/GXMSubclass.h"
#include "ui/Handle.h"
#include "ui/PictureBox.h"

namespace tellurvane {

enum class ControlKind {
  kCheckBox = 1,
  kPushButton = 2,
  kOptionButton = 3,
  kLabel = 4,
  kEditBox = 5,
  kEditableComboBox = 6,
  kDropDownList = 7,
  kSimpleComboBox = 8,
  kListBox = 9,
  kMultiSelectListBox = 10,
  kToggleSelectListBox = 11,
  kRichEditBox = 12,
  kSortedListBox = 13,
};

// The control fills its host and follows the host's size and enabled state (a combo box that drops
// down is never lower than its text needs: give its host 26 pixels or more at 96 dpi); a host that
// is given the keyboard passes it on. Set the host, then what is to hold from the start, then
// create. The window may die before the object or after it; Create may then be called again.
//
// Option buttons stand each in a host of their own, so the platform sees no group: the owner takes
// the mark off the others when one is chosen.
class clsControl final : private GXISubclass {
 public:
  clsControl();
  clsControl(const clsControl&) = delete;
  clsControl& operator=(const clsControl&) = delete;
  ~clsControl();

  // The host has to have its window when Create is called.
  void TargetPictureBox(PictureBox& host) { host_ = &host; }

  // Creates the control. One that exists is destroyed first. Throws FatalError where the system
  // refuses.
  void Create(ControlKind kind);

  // None before Create and after the window's end. Every property below may be asked for and set
  // without a window; what a window keeps (text, mark, list) is then empty.
  HWND hwnd() const { return hwnd_; }

  // Pixels kept free to the left and to the right of the text: a margin of the kinds that text is
  // typed into. The other kinds have no margins and do not heed it.
  int FontRightLeading() const { return fontRightLeading_; }
  void FontRightLeading(int pixels);

  // Whether a check box or an option is marked.
  bool Checked() const;
  void Checked(bool checked);

  // The control's own state; in a disabled host it is greyed all the same.
  bool Enabled() const { return isEnabled_; }
  void Enabled(bool enabled);

  // Whether the control shows when its host does.
  bool Visible() const { return isVisible_; }
  void Visible(bool visible);

  // Unless set: the host's back colour for buttons and labels; for boxes and lists the system's
  // window colour, or its face colour while they are disabled. System colour references are kept.
  Color BackColor() const;
  void BackColor(Color color);
  // Unless set: the system's colour of window text, or of grey text in a disabled rich edit box.
  // With visual styles the platform writes beside a check box or an option, and on a push button,
  // in the theme's colour.
  Color ForeColor() const;
  void ForeColor(Color color);

  // Line breaks are CR LF. A rich edit box holds plain text only, whatever is pasted.
  std::wstring text() const;
  void text(const std::wstring& value);

  // 1 and 4 put a thin frame around the control, any other value takes it away.
  void BorderStyle(int style);

  // Above 0 a kind that text is typed into has many lines. Counts at the next Create.
  int Multilin() const { return multilin_; }
  void Multilin(int flag) { multilin_ = flag; }

  // The entries of a list or combo box. Indices count from 0; -1 means none. For another kind, or
  // an index outside the list, nothing is set, and 0, -1 or an empty text is returned.
  LONG_PTR ItemData(int index) const;
  void ItemData(int index, LONG_PTR value);
  // The selected entry. Where many may be selected, the one with the focus mark: setting it selects
  // that entry too, and -1 deselects all.
  int ListIndex() const;
  void ListIndex(int index);
  int ListCount() const;
  void Clear();
  // Where the last entry was added; -1 when there is none, or one was removed since.
  int NewIndex() const { return newIndex_; }
  std::wstring List(int index) const;
  // Keeps the entry's place, its data and whether it is selected.
  void List(int index, const std::wstring& value);
  void RemoveItem(int index);
  // At the end, or where its text belongs in a sorted list.
  void AddItem(const std::wstring& value);

  // Events: what the user did. Setting a property raises none. Any may be left empty, and any may
  // destroy the control.
  //
  // Click: a button was pressed, an option or an entry chosen, a label clicked. Not of the sorted
  // list box, whose style asks for no notifications.
  std::function<void()> Click;
  // The text of a box was changed.
  std::function<void()> Change;
  std::function<void()> DblClick;
  std::function<void()> GotFocus;
  std::function<void()> LostFocus;
  // A virtual key code. Answers true when the key was for the owner; the control then does not see
  // it. Tab, Enter and Esc go to the form, unless the control needs them: Enter makes a new line in
  // a box of many lines, and presses a push button.
  std::function<bool(UINT key)> KeyDown;

 private:
  struct ListMessages;

  void WndProc(bool before, bool& handled, LRESULT& result, HWND window, UINT message,
               WPARAM wParam, LPARAM lParam, LONG_PTR& userParam) override;
  void HostMessageBefore(bool& handled, LRESULT& result, UINT message, WPARAM wParam,
                         LPARAM lParam);
  void HostMessageAfter(UINT message);
  void ControlMessageBefore(bool& handled, LRESULT& result, HWND window, UINT message,
                            WPARAM wParam, LPARAM lParam);
  void ControlMessageAfter(HWND window, UINT message);
  void OnCommand(UINT notification);
  bool OnKeyDown(HWND window, UINT key, bool isRepeated);
  bool PastePlainText(UINT key) const;
  std::optional<LRESULT> DialogCode(const MSG* message) const;

  void Destroy();
  void Attach();
  void AttachKeyboard(HWND window);
  void AttachDropDown();
  DWORD Style() const;
  HWND TypingWindow() const;
  void FitToHost();
  void EraseBelowList(HDC context) const;
  bool IsGreyed() const;
  void ApplyEnabled();
  void ApplyColors();
  void ApplyMargins();
  void ApplyBorder();
  HBRUSH PrepareContext(HDC context);
  LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
  const ListMessages* Entries() const;
  bool HasEntry(int index) const;
  bool IsSelected(int index) const;

  GXMSubclass engine_;
  PictureBox* host_ = nullptr;
  HWND hostWindow_ = nullptr;
  HWND hwnd_ = nullptr;
  ControlKind kind_ = ControlKind::kLabel;

  int fontRightLeading_ = 0;
  int multilin_ = 0;
  bool hasBorder_ = false;
  bool isEnabled_ = true;
  bool isVisible_ = true;
  bool isSettingText_ = false;
  int newIndex_ = -1;

  std::optional<Color> backColor_;
  std::optional<Color> foreColor_;
  UniqueBrush backBrush_;
  Color backBrushColor_ = 0;
};

}  // namespace tellurvane
