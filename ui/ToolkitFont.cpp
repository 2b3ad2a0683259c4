#include "ui/ToolkitFont.h"

#include <array>

#include "ui/Density.h"
#include "ui/Handle.h"

namespace tellurvane {
namespace {

constexpr int kPoints = 9;
constexpr int kPointsPerInch = 72;

constexpr int kSampleSize = 32;
using Sample = std::array<BYTE, kSampleSize * kSampleSize / 8>;

// The picture of a character in black and white.
Sample Drawn(HFONT font, wchar_t character) {
  Sample sample = {};
  const UniqueBitmap picture(CreateBitmap(kSampleSize, kSampleSize, 1, 1, nullptr));
  const UniqueMemoryDc context(CreateCompatibleDC(nullptr));
  if (!picture || !context) return sample;
  const SelectedObject selectedPicture(context.Get(), picture.Get());
  const SelectedObject selectedFont(context.Get(), font);
  PatBlt(context.Get(), 0, 0, kSampleSize, kSampleSize, WHITENESS);
  TextOutW(context.Get(), 0, 0, &character, 1);
  GetBitmapBits(picture.Get(), static_cast<LONG>(sample.size()), sample.data());
  return sample;
}

// Compares pictures, because the system may draw Chinese with another font; without one each
// character is the same box. A Chinese system has one, and drawing would take a tenth of the start.
bool HasChinese(HFONT font) {
  constexpr UINT kTraditionalChinese = 950;
  return GetACP() == kTraditionalChinese || Drawn(font, L'新') != Drawn(font, L'增');
}

UniqueFont MakeFont() {
  LOGFONTW font = {};
  font.lfHeight = -MulDiv(kPoints, DotsPerInch(), kPointsPerInch);
  font.lfWeight = FW_NORMAL;
  font.lfCharSet = DEFAULT_CHARSET;
  font.lfQuality = CLEARTYPE_QUALITY;
  lstrcpynW(font.lfFaceName, L"Tahoma", LF_FACESIZE);
  UniqueFont tahoma(CreateFontIndirectW(&font));
  if (HasChinese(tahoma.Get())) return tahoma;
  // The system replaces the face by one with these characters.
  font.lfCharSet = CHINESEBIG5_CHARSET;
  return UniqueFont(CreateFontIndirectW(&font));
}

}  // namespace

HFONT ToolkitFont() {
  static UniqueFont font;
  if (!font) font = MakeFont();
  return font.Get();
}

}  // namespace tellurvane
