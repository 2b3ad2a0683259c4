// A window's picture, pixel by pixel.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "ui/Color.h"

namespace tellurvane {

struct WindowPicture {
  int width = 0;
  int height = 0;
  std::vector<Color> pixels;  // row by row, from the top

  Color At(int x, int y) const { return pixels.at(static_cast<size_t>(y * width + x)); }
};

// The inside of a visible window with its children, as on the screen.
WindowPicture PictureOf(HWND window);

// Saves it as NAME.bmp in the folder that the environment variable TELLURVANE_PICTURES names.
// Without the variable nothing is saved.
void SavePicture(const WindowPicture& picture, const std::string& name);

}  // namespace tellurvane
