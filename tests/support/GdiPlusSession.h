// GDI+ for as long as a test needs it: the texts of a note are drawn with it.
#pragma once

#include <windows.h>

#include <objidl.h>

#include <gdiplus.h>

namespace tellurvane {

class GdiPlusSession {
 public:
  GdiPlusSession() {
    const Gdiplus::GdiplusStartupInput input;
    Gdiplus::GdiplusStartup(&token_, &input, nullptr);
  }
  GdiPlusSession(const GdiPlusSession&) = delete;
  GdiPlusSession& operator=(const GdiPlusSession&) = delete;
  ~GdiPlusSession() { Gdiplus::GdiplusShutdown(token_); }

 private:
  ULONG_PTR token_ = 0;
};

}  // namespace tellurvane
