#include "ui/ToolkitFont.h"

#include "ui/Handle.h"

namespace tellurvane {
namespace {

constexpr int kPoints = 9;
constexpr int kPointsPerInch = 72;

UniqueFont MakeFont() {
  const WindowDc screen(nullptr);
  LOGFONTW font = {};
  font.lfHeight = -MulDiv(kPoints, GetDeviceCaps(screen.Get(), LOGPIXELSY), kPointsPerInch);
  font.lfWeight = FW_NORMAL;
  font.lfCharSet = DEFAULT_CHARSET;
  font.lfQuality = CLEARTYPE_QUALITY;
  lstrcpynW(font.lfFaceName, L"Tahoma", LF_FACESIZE);
  return UniqueFont(CreateFontIndirectW(&font));
}

}  // namespace

HFONT ToolkitFont() {
  static const UniqueFont font = MakeFont();
  return font.Get();
}

}  // namespace tellurvane
