#include "tests/accessible/WindowPicture.h"

#include <cstdlib>
#include <fstream>

#include "tests/support/WindowTestSupport.h"
#include "ui/Handle.h"

namespace tellurvane {
namespace {

// Top-down, 32 bits for each pixel.
BITMAPINFO FormatOf(int width, int height) {
  BITMAPINFO format = {};
  format.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
  format.bmiHeader.biWidth = width;
  format.bmiHeader.biHeight = -height;
  format.bmiHeader.biPlanes = 1;
  format.bmiHeader.biBitCount = 32;
  return format;
}

// Red and blue change places.
Color Swapped(Color color) {
  return Rgb(static_cast<int>(color >> 16 & 0xFF), static_cast<int>(color >> 8 & 0xFF),
             static_cast<int>(color & 0xFF));
}

}  // namespace

WindowPicture PictureOf(HWND window) {
  RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
  Pump();
  RECT client = {};
  GetClientRect(window, &client);
  WindowPicture picture = {static_cast<int>(client.right), static_cast<int>(client.bottom), {}};
  const WindowDc screen(window);
  const UniqueMemoryDc copy(CreateCompatibleDC(nullptr));
  BITMAPINFO format = FormatOf(picture.width, picture.height);
  void* bits = nullptr;
  const UniqueBitmap bitmap(
      CreateDIBSection(copy.Get(), &format, DIB_RGB_COLORS, &bits, nullptr, 0));
  const SelectedObject selected(copy.Get(), bitmap.Get());
  BitBlt(copy.Get(), 0, 0, picture.width, picture.height, screen.Get(), 0, 0, SRCCOPY);
  GdiFlush();
  const auto* const pixel = static_cast<const Color*>(bits);
  for (int i = 0; i < picture.width * picture.height; ++i) {
    picture.pixels.push_back(Swapped(pixel[i]));
  }
  return picture;
}

void SavePicture(const WindowPicture& picture, const std::string& name) {
  const char* const folder = std::getenv("TELLURVANE_PICTURES");
  if (folder == nullptr) return;
  const BITMAPINFO format = FormatOf(picture.width, picture.height);
  BITMAPFILEHEADER header = {};
  header.bfType = 0x4D42;
  header.bfOffBits = sizeof(header) + sizeof(BITMAPINFOHEADER);
  header.bfSize = header.bfOffBits + static_cast<DWORD>(picture.pixels.size() * sizeof(Color));
  std::ofstream file(std::string(folder) + "/" + name + ".bmp", std::ios::binary);
  file.write(reinterpret_cast<const char*>(&header), sizeof(header));
  file.write(reinterpret_cast<const char*>(&format.bmiHeader), sizeof(BITMAPINFOHEADER));
  for (const Color pixel : picture.pixels) {
    const Color swapped = Swapped(pixel);
    file.write(reinterpret_cast<const char*>(&swapped), sizeof(swapped));
  }
}

}  // namespace tellurvane
