#include "ui/FocusFrame.h"

#include <algorithm>

#include "ui/Density.h"
#include "ui/Handle.h"
#include "ui/ModTheme.h"

namespace tellurvane {

void DrawFocusFrame(HDC target, const RECT& box, int systemIndex) {
  const Color ink = Adaptive(ModTheme::kIndigo, systemIndex);
  const UniqueBrush brush(CreateSolidBrush(ModTheme::TranslateColor(ink)));
  RECT line = box;
  for (int width = std::max(Scaled(1), 1); width > 0; --width) {
    FrameRect(target, &line, brush.Get());
    InflateRect(&line, -1, -1);
  }
}

}  // namespace tellurvane
