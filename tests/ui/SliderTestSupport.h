// A slider on a form, and the events that it raised.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "tests/support/WindowTestSupport.h"
#include "ui/clsProgress.h"

namespace tellurvane {

class SliderTest : public testing::Test {
 protected:
  static constexpr int kLeft = 20;
  static constexpr int kTop = 10;

  SliderTest() {
    host.Create({.parent = form.hwnd(),
                 .x = kLeft,
                 .y = kTop,
                 .width = 70,
                 .height = 18,
                 .isTabStop = true});
    SetCursorPos(350, 250);  // outside the host
    Pump();
    slider.TargetPictureBox(host);
    slider.Create();
    slider.Max(100);
    slider.PositionSet = [this](double value, double) { Note("PositionSet", value); };
    slider.PositionSetByMouse = [this](double value) { Note("PositionSetByMouse", value); };
    slider.MousePress = [this] { events.emplace_back("MousePress"); };
    slider.MouseInside = [this](bool isInside) { events.emplace_back(isInside ? "in" : "out"); };
    slider.Resize = [this] { events.emplace_back("Resize"); };
  }

  void Note(const char* event, double value) {
    std::ostringstream line;
    line << event << ' ' << value;
    events.push_back(line.str());
  }

  // The events since the last time.
  std::vector<std::string> Events() { return std::exchange(events, {}); }

  // At a pixel of the host, as the system sends it.
  void Press(int x, int y = 5, UINT message = WM_LBUTTONDOWN) {
    SendMouse(host.hwnd(), message, x, y);
  }
  void Drag(int x, int y = 5) { SendMouse(host.hwnd(), WM_MOUSEMOVE, x, y, MK_LBUTTON); }
  void Release(int x, int y = 5, UINT message = WM_LBUTTONUP) {
    SendMouse(host.hwnd(), message, x, y);
  }
  void Wheel(int distance, int keys = 0) {
    const auto bits = static_cast<DWORD>(MAKELONG(keys, distance));
    SendMessageW(host.hwnd(), WM_MOUSEWHEEL, bits, 0);
  }
  void Key(UINT key) { SendMessageW(host.hwnd(), WM_KEYDOWN, key, 0); }

  TestForm form;
  PictureBox host;
  clsProgress slider;
  std::vector<std::string> events;
};

}  // namespace tellurvane
