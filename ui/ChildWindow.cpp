#include "ui/ChildWindow.h"

#include "base/FatalError.h"

namespace tellurvane {

HWND CreateChildWindow(const ChildWindowArgs& args) {
  const HWND window = CreateWindowExW(args.extendedStyle, args.className, L"", args.style, args.x,
                                      args.y, args.width, args.height, args.parent, nullptr,
                                      GetModuleHandleW(nullptr), nullptr);
  if (window == nullptr) throw FatalError(L"無法建立控制項，程式無法繼續執行。");
  return window;
}

}  // namespace tellurvane
