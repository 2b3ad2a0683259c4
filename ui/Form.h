// A top-level window.
#pragma once

#include <string>

#include "ui/DrawnWindow.h"

namespace tellurvane {

enum class FormBorder {
  kNone,         // no frame, no caption, no taskbar button
  kFixedSingle,  // a caption with a system menu and a minimise box
  kFixedDialog,  // a caption with a close box
};

// None where the system refuses one.
struct FormIcons {
  HICON big = nullptr;    // of the task switcher
  HICON small = nullptr;  // of the caption, the taskbar and the tray
};

// Sizes are twips. A width or height of 0 is left to the form.
struct FormArgs {
  std::wstring caption;
  FormBorder border = FormBorder::kFixedSingle;
  int widthTwips = 0;  // the frame included
  int heightTwips = 0;
  Color backColor = kWhite;
  HWND owner = nullptr;
  FormIcons icons = {};
  DWORD extendedStyle = 0;
  // A form whose class is changed while it lives needs one of its own.
  std::wstring className = L"TellurvaneForm";
};

// A dialog on the windows' ground, with the executable's own icon.
FormArgs DialogArgs(const std::wstring& caption, int widthTwips, int heightTwips, HWND owner);

// The icon that the executable bears, in the sizes of this screen. The process owns them.
FormIcons ExecutableIcons();

// Lives as its object lives; Unload only ends the window. The handlers are named as the system
// names them and do nothing by default.
class Form : public DrawnWindow {
 public:
  Form() = default;
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;
  ~Form() override;

  // Creates the window, hidden, and calls Form_Load.
  void Load(const FormArgs& args);

  void Show();
  // Without taking the keyboard from whoever has it.
  void ShowWithoutFocus();
  void Hide();
  // Shows the form and returns when it is unloaded or hidden; the owner is disabled meanwhile.
  void ShowModal();
  // Asks Form_Unload, and ends the window unless it refuses. True when the window is gone.
  bool Unload();
  bool IsLoaded() const { return hwnd() != nullptr; }

  // Position and outer size on the screen, in twips.
  int Left() const;
  int Top() const;
  int Width() const;
  int Height() const;
  void Move(int leftTwips, int topTwips);
  void Move(int leftTwips, int topTwips, int widthTwips, int heightTwips);
  // Hands a pressed left button over to the system, which moves the form with the mouse.
  void BeginDrag();
  // Moves the form so that no edge is beyond those of the screen that it is nearest to.
  void PullInside();
  // In the middle of the owner, or of the work area without one; wholly on the owner's screen.
  void Center();
  // Makes the inside this large, in pixels.
  void ResizeInside(int width, int height);

  // Whole-window opacity, 0 to 255. Makes the window layered.
  void Opacity(BYTE opacity);

 protected:
  virtual void Form_Load() {}
  virtual void Form_Resize() {}
  // False keeps the window.
  virtual bool Form_Unload() { return true; }
  // Enter and Esc, wherever the focus is inside, unless a control needs them.
  virtual void Form_Enter() {}
  virtual void Form_Escape() {}

  LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  void OnDestroyed(HWND window) final;
  void KeepFocus();
  void ReleaseOwner();

  bool isModal_ = false;       // shown by ShowModal, neither hidden nor unloaded since
  HWND modalOwner_ = nullptr;  // disabled while the form is modal
  HWND focus_ = nullptr;       // where the keyboard was when the form lost it
  bool isPullOwed_ = false;    // the screens have changed while the form was minimised
};

}  // namespace tellurvane
