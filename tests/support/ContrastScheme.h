// High contrast as the user switches it: the system's colours and its answer change, and then its
// messages come.
#pragma once

#include <windows.h>

#include <array>
#include <iterator>

#include "tests/support/WindowTestSupport.h"
#include "ui/UserPreferences.h"

namespace tellurvane {

// The colours that our windows use, in the order of kContrastIndices.
inline constexpr std::array<int, 9> kContrastIndices = {
    COLOR_WINDOW,        COLOR_WINDOWTEXT, COLOR_BTNFACE, COLOR_BTNTEXT, COLOR_HIGHLIGHT,
    COLOR_HIGHLIGHTTEXT, COLOR_GRAYTEXT,   COLOR_MENU,    COLOR_MENUTEXT};
using ContrastColors = std::array<COLORREF, kContrastIndices.size()>;

inline constexpr ContrastColors kBlackScheme = {
    RGB(0, 0, 0), RGB(255, 255, 255), RGB(16, 0, 32), RGB(255, 255, 0),  RGB(26, 235, 255),
    RGB(8, 8, 8), RGB(63, 242, 63),   RGB(0, 0, 0),   RGB(255, 255, 255)};
inline constexpr ContrastColors kWhiteScheme = {
    RGB(255, 255, 255), RGB(0, 0, 0),  RGB(255, 255, 224), RGB(0, 0, 96), RGB(55, 0, 110),
    RGB(250, 250, 250), RGB(96, 0, 0), RGB(255, 255, 255), RGB(0, 0, 0)};

// Normal colours again at the end. `window` gets the messages of both changes; it has to ask again
// for itself. Without a window this asks for it.
class ContrastScheme {
 public:
  ContrastScheme(const ContrastColors& colors, HWND window) : window_(window) {
    for (size_t i = 0; i < before_.size(); ++i) before_.at(i) = GetSysColor(kContrastIndices.at(i));
    SetUserPreferences({.isHighContrast = [] { return isOn; }});
    isOn = true;
    Show(colors);
  }
  ContrastScheme(const ContrastScheme&) = delete;
  ContrastScheme& operator=(const ContrastScheme&) = delete;
  ~ContrastScheme() {
    isOn = false;
    Show(before_);
    SetUserPreferences({});
  }

 private:
  void Show(const ContrastColors& colors) const {
    SetSysColors(static_cast<int>(colors.size()), kContrastIndices.data(), colors.data());
    if (window_ == nullptr) {
      RefreshHighContrast();
    } else {
      SendMessageW(window_, WM_SYSCOLORCHANGE, 0, 0);
      SendMessageW(window_, WM_SETTINGCHANGE, SPI_SETHIGHCONTRAST, 0);
    }
    Pump();
  }

  inline static bool isOn = false;
  HWND window_;
  ContrastColors before_ = {};
};

}  // namespace tellurvane
