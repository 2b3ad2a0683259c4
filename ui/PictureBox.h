// The child window that hosts a control or is drawn on.
#pragma once

#include <functional>

#include "ui/DrawnWindow.h"

namespace tellurvane {

struct PictureBoxArgs {
  HWND parent = nullptr;
  int x = 0;  // pixels in the parent's client area
  int y = 0;
  int width = 0;
  int height = 0;
  Color backColor = kWhite;
  bool isVisible = true;
  bool isTabStop = false;  // takes the keyboard itself, as a slider's host does
};

class PictureBox : public DrawnWindow {
 public:
  void Create(const PictureBoxArgs& args);

  // A key while the box itself has the focus. True when the key is handled.
  std::function<bool(UINT key)> KeyDown;
  // The box was enabled or disabled.
  std::function<void()> EnabledChanged;

 protected:
  LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
};

}  // namespace tellurvane
