// A window that shows a picture drawn in memory and reports the mouse.
#pragma once

#include <functional>

#include "ui/Surface.h"
#include "ui/Window.h"

namespace tellurvane {

// Bits, as the system's mouse events number them.
enum MouseButton { kNoButton = 0, kLeftButton = 1, kRightButton = 2, kMiddleButton = 4 };
enum ShiftState { kShiftKey = 1, kControlKey = 2, kAltKey = 4 };

// The buttons among the MK_ bits of a mouse message.
int ButtonsDown(WPARAM keys);

struct MouseEvent {
  int button = kNoButton;  // the pressed or released one; while moving all that are down
  int shift = 0;
  int x = 0;  // pixels from the client area's left upper corner
  int y = 0;
};

// The picture keeps what was drawn until it is drawn over, cleared, or the size changes; then
// `Paint` is asked to draw it anew. The screen is only ever copied to from it: nothing flickers.
class DrawnWindow : public Window {
 public:
  using MouseHandler = std::function<void(const MouseEvent&)>;

  Color BackColor() const { return backColor_; }
  // Draws anew. A system colour reference is kept as one.
  void BackColor(Color color);

  // What to draw on. Never null while the window exists, unless memory is short.
  HDC Dc() const { return surface_.Dc(); }
  // Fills the picture with the back colour.
  void Clear() { surface_.Clear(backColor_); }
  // Brings the picture, or a part of it, to the screen before it returns.
  void Refresh();
  void Refresh(const RECT& area);
  // Clears the picture, has it painted, and refreshes.
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

 private:
  void CopyToScreen();
  void FitSurface();

  Surface surface_;
  Color backColor_ = kWhite;
};

}  // namespace tellurvane
