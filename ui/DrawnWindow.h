// A window that shows a picture drawn in memory and reports the mouse.
#pragma once

#include <functional>

#include "ui/Surface.h"
#include "ui/Window.h"

namespace tellurvane {

// Bits, as the system's mouse events number them.
enum MouseButton { kNoButton = 0, kLeftButton = 1, kRightButton = 2, kMiddleButton = 4 };
enum ShiftState { kShiftKey = 1, kControlKey = 2, kAltKey = 4 };

// The bits of ShiftState that are held while a message is handled.
int ShiftNow();
// From the second parameter of a key message: the key was down before.
bool IsRepeatedKey(LPARAM lParam);

// The buttons among the MK_ bits of a mouse message.
int ButtonsDown(WPARAM keys);

struct MouseEvent {
  int button = kNoButton;  // the pressed or released one; while moving all that are down
  int shift = 0;
  int x = 0;  // pixels from the client area's left upper corner
  int y = 0;
};

// The picture stays until it is drawn over, cleared, or the size changes; then `Paint` draws it
// again. The screen only gets copies of the picture, so that nothing flickers.
class DrawnWindow : public Window {
 public:
  using MouseHandler = std::function<void(const MouseEvent&)>;

  Color BackColor() const { return backColor_; }
  // Draws the picture again. A system colour reference is kept as one.
  void BackColor(Color color);

  // The picture's device context. Null while the window has no area, or without memory.
  HDC Dc() const { return surface_.Dc(); }
  // Fills the picture with the back colour.
  void Clear() { surface_.Clear(backColor_); }
  // Shows the picture, or a part of it, before it returns.
  void Refresh();
  void Refresh(const RECT& area);
  // Clears the picture, paints it and shows it.
  void Redraw();

  // Events. Any may be left empty.
  std::function<void(HDC)> Paint;
  std::function<void()> Resize;
  MouseHandler MouseDown;
  MouseHandler MouseMove;
  MouseHandler MouseUp;
  MouseHandler DblClick;

 protected:
  LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  // The system's colours or settings have changed. Draws the picture again.
  virtual void ColorsChanged() { Redraw(); }

 private:
  // False for another message.
  bool RaiseMouse(UINT message, WPARAM wParam, LPARAM lParam) const;
  void CopyToScreen();
  void FitSurface();

  Surface surface_;
  Color backColor_ = kWhite;
};

}  // namespace tellurvane
