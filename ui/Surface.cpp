#include "ui/Surface.h"

#include "ui/ModTheme.h"

namespace tellurvane {

bool Surface::Resize(int width, int height, Color back) {
  if (width <= 0 || height <= 0) {
    picture_.reset();
    return false;
  }
  if (picture_ && width == width_ && height == height_) return false;
  picture_ = MemoryContext::Create(width, height);
  if (!picture_) return false;
  width_ = width;
  height_ = height;
  Clear(back);
  return true;
}

void Surface::Clear(Color back) {
  const RECT all = {0, 0, width_, height_};
  const UniqueBrush brush(CreateSolidBrush(ModTheme::TranslateColor(back)));
  FillRect(Dc(), &all, brush.Get());
}

void Surface::CopyTo(HDC target, const RECT& area) const {
  BitBlt(target, area.left, area.top, area.right - area.left, area.bottom - area.top, Dc(),
         area.left, area.top, SRCCOPY);
}

}  // namespace tellurvane
