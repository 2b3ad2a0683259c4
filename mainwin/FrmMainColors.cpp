// The main window under high contrast: the pictures of its toolbar.
#include "mainwin/FrmMain.h"
#include "ui/Density.h"
#include "ui/ModTheme.h"

namespace tellurvane {

Strip FrmMain::ToolbarImages() {
  constexpr int kImages = 101;
  constexpr int kImageSize = 16;  // pixels of 96 dpi
  return LoadStrip(kImages, kImageSize, Scaled(kImageSize));
}

void FrmMain::ShowToolbarImages(const Strip& images) {
  hasOutlinedImages_ = ModTheme::IsDarkGround(picToolbar_.BackColor());
  if (hasOutlinedImages_) OutlinePictures(images.bitmap.Get(), kWhite);
  ToolBar_.ClearImages();
  ToolBar_.AddBitmap(images.bitmap.Get(), kWhite);
  picToolbar_.Redraw();
  InvalidateRect(ToolBar_.hwnd(), nullptr, TRUE);
}

void FrmMain::ColorsChanged() {
  Form::ColorsChanged();
  // The message may come while the window is created.
  if (ToolBar_.hwnd() == nullptr ||
      hasOutlinedImages_ == ModTheme::IsDarkGround(picToolbar_.BackColor())) {
    return;
  }
  ShowToolbarImages(ToolbarImages());
}

}  // namespace tellurvane
