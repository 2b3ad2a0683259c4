// For tests of windows: a message pump, a form for controls, pixels, leak counts.
#pragma once

#include <windows.h>

#include <chrono>
#include <functional>
#include <string>
#include <vector>

#include "ui/Form.h"

namespace tellurvane {

// Handles messages until the condition holds. Returns false if the time limit passes first.
bool PumpUntil(const std::function<bool()>& condition,
               std::chrono::milliseconds limit = std::chrono::seconds(10));

// Handles the pending messages.
void Pump();

// A form without a frame at the screen's left upper corner, shown.
class TestForm : public Form {
 public:
  explicit TestForm(int width = 400, int height = 300);
};

// The colour that the window shows, or that was drawn on the context, at a pixel.
Color PixelOf(HDC context, int x, int y);

// The colours of an area, row by row.
std::vector<Color> PixelsIn(HDC context, const RECT& area);

// Sends a press, a release or a move of the mouse at a pixel of the window's client area.
void SendMouse(HWND window, UINT message, int x, int y, WPARAM keys = 0);

std::wstring WindowText(HWND window);

// The resources that the process has at this moment.
struct ResourceCounts {
  long gdiObjects = 0;
  long windows = 0;
  long kernelHandles = 0;

  bool operator==(const ResourceCounts&) const = default;
};
ResourceCounts CountResources();
std::ostream& operator<<(std::ostream& out, const ResourceCounts& counts);

// Calls `useOnce` a few times to warm up, then in three rounds. Returns the growth or loss that
// every round has at least: 0 unless each call leaks something or closes something that it does not
// own. The rounds make 60 calls in all, or more if the environment variable TELLURVANE_LEAK_USES
// asks for more.
ResourceCounts LeakedBy(const std::function<void()>& useOnce);

}  // namespace tellurvane
