// Shows the toolkit's controls, for eyes and for scripts that click.
#include <windows.h>

#include <objidl.h>

#include <commctrl.h>
#include <gdiplus.h>

#include "GalleryForm.h"
#include "ui/MessageLoop.h"

int main() {
  const INITCOMMONCONTROLSEX controls = {sizeof(controls),
                                         ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES | ICC_DATE_CLASSES};
  InitCommonControlsEx(&controls);
  ULONG_PTR token = 0;
  const Gdiplus::GdiplusStartupInput input;
  Gdiplus::GdiplusStartup(&token, &input, nullptr);
  {
    tellurvane::GalleryForm gallery;
    tellurvane::FormArgs args;
    args.caption = L"Tellurvane 控制項展示";
    args.backColor = 0xF4F4F4;
    gallery.Load(args);
    gallery.Center();
    gallery.Show();
    tellurvane::RunMessageLoop();
  }
  Gdiplus::GdiplusShutdown(token);
  return 0;
}
