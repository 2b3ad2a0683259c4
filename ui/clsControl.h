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

// The control fills its host, follows the host's size and enabled state, and takes the keyboard
// focus that the host gets. The host of a combo box needs at least 26 pixels of height at 96 dpi.
// First set the host and Multilin, then create, then set the rest. The window may be destroyed
// before the object or after it.
//
// Each option button has a host of its own, so the platform sees no group: the owner clears the
// others when one is chosen.
class clsControl final : private GXISubclass {
 public:
  clsControl();
  clsControl(const clsControl&) = delete;
  clsControl& operator=(const clsControl&) = delete;
  ~clsControl();

  // The host needs its window before Create.
  void TargetPictureBox(PictureBox& host) { host_ = &host; }

  // Once. Throws FatalError if the window cannot be created.
  void Create(ControlKind kind);

  // Null before Create and after the window's end. Text, mark and entries are then empty; setting
  // them does nothing.
  HWND hwnd() const { return hwnd_; }

  // The left and right margin of the text, in pixels, for kinds that the user types into.
  int FontRightLeading() const { return fontRightLeading_; }
  void FontRightLeading(int pixels);

  // The mark of a check box or an option.
  bool Checked() const;
  void Checked(bool checked);

  // The control's own state. In a disabled host it is grey as well.
  bool Enabled() const { return isEnabled_; }
  void Enabled(bool enabled);

  // Whether the control shows in a visible host.
  bool Visible() const;
  void Visible(bool visible);

  // By default the host's colour for buttons and labels; for boxes and lists the system's window
  // colour, or its face colour while they are disabled.
  Color BackColor() const;
  void BackColor(Color color);
  // By default the system's text colour. Buttons write in the theme's colour.
  Color ForeColor() const;
  void ForeColor(Color color);

  // Line breaks are CR LF. A rich edit box holds plain text only.
  std::wstring text() const;
  void text(const std::wstring& value);

  // 1 and 4 draw a thin frame around the control, any other value removes it.
  void BorderStyle(int style);

  // Above 0, an edit box has many lines. Set it before Create.
  int Multilin() const { return multilin_; }
  void Multilin(int flag) { multilin_ = flag; }

  // The entries of a list or combo box. Indices count from 0; -1 means none. Other kinds and other
  // indices change nothing and return 0, -1 or an empty text.
  LONG_PTR ItemData(int index) const;
  void ItemData(int index, LONG_PTR value);
  // The selected entry. In a list with multiple selection: the focused entry; setting it selects
  // the entry as well, and -1 deselects all.
  int ListIndex() const;
  void ListIndex(int index);
  int ListCount() const;
  void Clear();
  // The index of the entry that was added last; -1 after a removal.
  int NewIndex() const { return newIndex_; }
  std::wstring List(int index) const;
  // Keeps the entry's index, data and selection.
  void List(int index, const std::wstring& value);
  void RemoveItem(int index);
  // At the end, or in order in a sorted list.
  void AddItem(const std::wstring& value);

  // Events: the user's actions. Setting a property raises none. Any may destroy the window.
  //
  // A button was pressed, an option or an entry chosen, a label clicked. Not raised by the sorted
  // list box, whose style sends no notifications.
  std::function<void()> Click;
  // The user changed the text.
  std::function<void()> Change;
  // A virtual key code. Return true to keep the key from the control. Tab, Enter and Esc go to the
  // form, but Enter makes a new line in a box with many lines and presses a push button.
  std::function<bool(UINT key)> KeyDown;

 private:
  struct ListMessages;
  struct Colors {
    Color ground = 0;
    Color ink = 0;

    bool operator==(const Colors&) const = default;
  };

  void WndProc(bool before, bool& handled, LRESULT& result, HWND window, UINT message,
               WPARAM wParam, LPARAM lParam, LONG_PTR& userParam) override;
  void HostMessageBefore(bool& handled, LRESULT& result, UINT message, WPARAM wParam,
                         LPARAM lParam);
  void HostMessageAfter(UINT message);
  void ControlMessageBefore(bool& handled, LRESULT& result, HWND window, UINT message,
                            WPARAM wParam, LPARAM lParam);
  void OnCommand(UINT notification);
  bool OnKeyDown(HWND window, UINT key, bool isRepeated);
  bool PastePlainText(UINT key) const;
  std::optional<LRESULT> DialogCode(const MSG* message) const;

  void Attach();
  void AttachDropDown();
  DWORD Style() const;
  HWND TypingWindow() const;
  void FitToHost();
  void EraseBelowList(HDC context) const;
  bool IsGreyed() const;
  bool IsOnHost() const;
  void ApplyEnabled();
  Colors ColorsNow() const;
  void ApplyColors();
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
  bool isEnabled_ = true;
  bool isSettingText_ = false;
  int newIndex_ = -1;

  std::optional<Color> backColor_;
  std::optional<Color> foreColor_;
  Colors shownColors_;
  UniqueBrush backBrush_;
  Color backBrushColor_ = 0;
};

}  // namespace tellurvane
