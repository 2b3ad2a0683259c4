// A top-level window.
#pragma once

#include <span>
#include <string>

#include "base/Pause.h"
#include "ui/DrawnWindow.h"

namespace tellurvane {

enum class FormBorder {
  kNone,         // no frame, no caption, no taskbar button
  kFixedSingle,  // a caption with a system menu and a minimise box
  kFixedDialog,  // a caption with a close box
};

// Sizes are twips. A width or height of 0 is left to the form.
struct FormArgs {
  std::wstring caption;
  FormBorder border = FormBorder::kFixedSingle;
  int widthTwips = 0;  // the frame included
  int heightTwips = 0;
  Color backColor = kWhite;
  HWND owner = nullptr;
  DWORD extendedStyle = 0;
  // A form that changes its window class needs one of its own.
  std::wstring className = L"TellurvaneForm";
};

// A dialog on the windows' ground.
FormArgs DialogArgs(const std::wstring& caption, int widthTwips, int heightTwips, HWND owner);

// A key that is pressed.
struct KeyEvent {
  UINT key = 0;   // a virtual key code
  int shift = 0;  // bits of ShiftState
  bool isRepeated = false;
};

// Has the executable's icon. Unload ends the window, not the object. The handlers do nothing by
// default.
class Form : public DrawnWindow {
 public:
  Form() = default;
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;
  ~Form() override;

  // Creates the window, hidden, and calls Form_Load.
  void Load(const FormArgs& args);

  void Show();
  // The focus stays where it is.
  void ShowWithoutFocus();
  void Hide();
  // Shows the form and returns when it is unloaded or hidden; the owner is disabled meanwhile.
  void ShowModal();
  // Calls Form_Unload, and ends the window unless it returns false. True when the window is gone.
  bool Unload();
  bool IsLoaded() const { return hwnd() != nullptr; }

  // Position and outer size on the screen, in twips.
  int Left() const;
  int Top() const;
  int Width() const;
  int Height() const;
  void Move(int leftTwips, int topTwips);
  void Move(int leftTwips, int topTwips, int widthTwips, int heightTwips);
  // Lets the system move the form with the mouse while the left button is pressed.
  void BeginDrag();
  // Moves the form inside the nearest screen.
  void PullInside();
  // In the middle of the owner, or of the work area without one; wholly on the owner's screen.
  void Center();
  // Makes the inside this large, in pixels.
  void ResizeInside(int width, int height);

  // Whole-window opacity, 0 to 255. Makes the window layered.
  void Opacity(BYTE opacity);
  // The same, but opaque under high contrast: a picture below the window would weaken the contrast.
  void Translucency(BYTE opacity);
  // Takes one opacity after the other. Does nothing if the user wants no animations.
  void Fade(std::span<const BYTE> opacities, const Pause& pause);

 protected:
  virtual void Form_Load() {}
  virtual void Form_Resize() {}
  // False keeps the window.
  virtual bool Form_Unload() { return true; }
  // A key in the form, before the focused control gets it. True when it is handled.
  virtual bool Form_KeyDown(const KeyEvent& /*event*/) { return false; }
  // Enter and Esc, unless the focused control needs them.
  virtual void Form_Enter() {}
  virtual void Form_Escape() {}

  // The control that has the keyboard first; without one, the first of the Tab order.
  void FirstFocus(HWND control) { firstFocus_ = control; }

  LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  void OnDestroyed(HWND window) final;
  void ShowOwnIcons() const;
  void KeepFocus();
  bool CanTakeFocus(HWND control) const;
  HWND FocusTarget() const;
  void ReleaseOwner();

  bool isModal_ = false;       // shown by ShowModal, neither hidden nor unloaded since
  HWND modalOwner_ = nullptr;  // disabled while the form is modal
  HWND firstFocus_ = nullptr;
  HWND focus_ = nullptr;              // where the keyboard was when the form lost it
  bool pullInsideOnRestore_ = false;  // the screens changed while the form was minimised
};

}  // namespace tellurvane
