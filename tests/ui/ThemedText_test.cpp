#include <windows.h>

#include <objidl.h>

#include <gdiplus.h>
#include <gtest/gtest.h>

#include "Canvas.h"
#include "tests/support/FailingImport.h"
#include "tests/support/GdiPlusSession.h"
#include "ui/ModTheme.h"

namespace tellurvane {
namespace {

constexpr ModTheme::Argb kNothing = 0x00000000;  // its opacity is 0
constexpr ModTheme::Argb kRed = 0xFFFF0000;
constexpr ModTheme::Argb kGreen = 0xFF00FF00;
constexpr ModTheme::Argb kBlue = 0xFF0000FF;
constexpr wchar_t kChinese[] = L"每 5 分鐘執行一次";

struct Paper : Canvas {
  explicit Paper(int width = 400, int height = 120) : Canvas(width, height, kWhite) {}
};

const ModTheme::TextColors kTextOnly = {kBlue, kNothing, kNothing};
const ModTheme::TextColors kGlowOnly = {kNothing, kGreen, kNothing};
const ModTheme::TextColors kShadowOnly = {kNothing, kNothing, kRed};

class ThemedTextTest : public testing::Test {
 protected:
  static Ink InkOf(const std::wstring& text, int x, int y, const ModTheme::TextColors& colors,
                   const ModTheme::TextFont& font = {}) {
    const Paper canvas;
    ModTheme::Text(canvas.Dc(), text, x, y, colors, font);
    return canvas.FindInk();
  }

 private:
  GdiPlusSession session_;
};

TEST_F(ThemedTextTest, DoublesTheHorizontalPositionOnly) {
  const ModTheme::TextFont usual;
  const Gdiplus::FontFamily family(ModTheme::AvailableFace(usual.face).c_str());
  const Gdiplus::Font font(&family, usual.size, usual.style, Gdiplus::UnitPixel);
  const Gdiplus::SolidBrush brush{Gdiplus::Color(kBlue)};
  for (const POINT& place : {POINT{10, 10}, POINT{38, 30}}) {
    const Paper drawn, expected;
    ModTheme::Text(drawn.Dc(), L"H", place.x, place.y, kTextOnly, usual);
    {
      Gdiplus::Graphics graphics(expected.Dc());
      graphics.SetTextRenderingHint(Gdiplus::TextRenderingHintAntiAlias);
      const Gdiplus::RectF box(static_cast<float>(2 * place.x), static_cast<float>(place.y + 1), 0,
                               0);
      graphics.DrawString(L"H", 1, &font, box, nullptr, &brush);
    }
    EXPECT_GT(expected.FindInk().pixels, 0);
    EXPECT_EQ(drawn.Pixels(), expected.Pixels()) << place.x;
  }
}

int setting = 0;

Gdiplus::GpStatus WINGDIPAPI RecordSetting(Gdiplus::GpGraphics*, int value) {
  setting = value;
  return Gdiplus::Ok;
}

TEST_F(ThemedTextTest, IsSmoothAndOfHighQuality) {
  const Paper canvas;
  for (const auto& [name, value] :
       {std::pair("GdipSetTextRenderingHint", 4), std::pair("GdipSetSmoothingMode", 4),
        std::pair("GdipSetCompositingQuality", 2)}) {
    FailingImport call({name});
    ASSERT_TRUE(call.IsImported()) << name;
    call.Replace(RecordSetting);
    setting = -1;
    ModTheme::Text(canvas.Dc(), L"H", 10, 10, {}, {});
    EXPECT_EQ(setting, value) << name;
  }
}

TEST_F(ThemedTextTest, DrawsShadowGlowAndTextAPixelAside) {
  const Ink text = InkOf(L"Hg", 20, 20, kTextOnly);
  const Ink glow = InkOf(L"Hg", 20, 20, kGlowOnly);
  const Ink shadow = InkOf(L"Hg", 20, 20, kShadowOnly);
  ASSERT_GT(text.pixels, 0);
  EXPECT_EQ(shadow.left - text.left, 1);
  EXPECT_EQ(shadow.top - text.top, 1);
  EXPECT_EQ(glow.left - text.left, -1);
  EXPECT_EQ(glow.top - text.top, -1);
  for (const Ink& other : {glow, shadow}) {
    EXPECT_EQ(other.Width(), text.Width());
    EXPECT_EQ(other.Height(), text.Height());
  }
}

TEST_F(ThemedTextTest, TheGlowCoversTheShadowAndTheTextCoversBoth) {
  const ModTheme::TextFont font = {.size = 48, .style = ModTheme::kBold};
  const Paper text, glow, glowAndShadow, all;
  ModTheme::Text(text.Dc(), L"HIH", 20, 20, kTextOnly, font);
  ModTheme::Text(glow.Dc(), L"HIH", 20, 20, kGlowOnly, font);
  ModTheme::Text(glowAndShadow.Dc(), L"HIH", 20, 20, {kNothing, kGreen, kRed}, font);
  ModTheme::Text(all.Dc(), L"HIH", 20, 20, {kBlue, kGreen, kRed}, font);
  int letters = 0;
  for (int y = 0; y < 120; ++y) {
    for (int x = 0; x < 400; ++x) {
      if (glow.At(x, y) == Rgb(0, 255, 0)) {
        ASSERT_EQ(glowAndShadow.At(x, y), Rgb(0, 255, 0)) << x << ", " << y;
      }
      if (text.At(x, y) != Rgb(0, 0, 255)) continue;
      ASSERT_EQ(all.At(x, y), Rgb(0, 0, 255)) << x << ", " << y;
      ++letters;
    }
  }
  EXPECT_GT(letters, 500);
}

TEST_F(ThemedTextTest, ReturnsTheWidthOfTheText) {
  const ModTheme::TextFont font = {.size = 16};
  for (const std::wstring text : {L"i", L"wide words", kChinese}) {
    const Paper canvas;
    const ModTheme::TextSize size = ModTheme::MeasureText(canvas.Dc(), text, font);
    EXPECT_EQ(canvas.FindInk().pixels, 0) << "measuring draws nothing";
    EXPECT_GE(size.height, 16);
    EXPECT_LE(size.height, 32);
    const float width = ModTheme::Text(canvas.Dc(), text, 10, 10, kTextOnly, font);
    EXPECT_EQ(width, size.width);
    const Ink ink = canvas.FindInk();
    EXPECT_GE(width, static_cast<float>(ink.Width()));
    EXPECT_LE(width, static_cast<float>(ink.Width()) + font.size);
  }
  const Paper canvas;
  EXPECT_EQ(ModTheme::Text(canvas.Dc(), L"", 10, 10, {kBlue, kGreen, kRed}, {}), 0);
  EXPECT_EQ(canvas.FindInk().pixels, 0);
  EXPECT_EQ(ModTheme::Text(nullptr, L"words", 10, 10, {}, {}), 0);
}

TEST_F(ThemedTextTest, NeitherWrapsNorClips) {
  const Paper canvas(2'000, 60);
  const std::wstring text(200, L'W');
  const float width = ModTheme::Text(canvas.Dc(), text, 0, 0, kTextOnly, {.size = 8});
  const Ink ink = canvas.FindInk();
  EXPECT_GT(ink.Width(), 800);
  EXPECT_LE(ink.Height(), 10);
  EXPECT_GE(width, static_cast<float>(ink.Width()));
}

TEST_F(ThemedTextTest, BreaksLinesAtCrLf) {
  const ModTheme::TextFont font = {.size = 16};
  const Ink one = InkOf(L"HHHH", 10, 10, kTextOnly, font);
  const Ink two = InkOf(L"HHHH\r\nH", 10, 10, kTextOnly, font);
  EXPECT_EQ(two.Width(), one.Width());
  EXPECT_EQ(two.left, one.left);
  EXPECT_EQ(two.top, one.top);
  EXPECT_GE(two.Height(), one.Height() + 16);
  EXPECT_LE(two.Height(), one.Height() + 32);
}

TEST_F(ThemedTextTest, DrawsInAnotherFaceThanOneThatIsNotInstalled) {
  for (const std::wstring text : {L"five minutes", kChinese}) {
    const Ink ink = InkOf(text, 10, 10, kTextOnly, {.face = L"No Such Face", .size = 16});
    EXPECT_GT(ink.pixels, 100);
    EXPECT_GT(ink.Width(), 60);
  }
  // Chinese has different shapes; placeholder boxes would be alike.
  const Ink one = InkOf(L"一", 10, 10, kTextOnly, {.size = 20});
  EXPECT_GT(one.pixels, 0);
  EXPECT_LT(one.Height(), 8);
  EXPECT_GT(InkOf(L"鐘", 10, 10, kTextOnly, {.size = 20}).Height(), 12);
}

TEST_F(ThemedTextTest, HasTheSizeTheStyleAndTheColourGiven) {
  const Ink small = InkOf(L"HHHH", 10, 10, kTextOnly, {.size = 12});
  const Ink large = InkOf(L"HHHH", 10, 10, kTextOnly, {.size = 24});
  EXPECT_NEAR(large.Height(), 2 * small.Height(), 2);
  EXPECT_NEAR(large.Width(), 2 * small.Width(), 6);
  const ModTheme::TextFont boldFont = {.size = 24, .style = ModTheme::kBold};
  const Ink bold = InkOf(L"HHHH", 10, 10, kTextOnly, boldFont);
  EXPECT_GT(bold.pixels, large.pixels * 5 / 4);
  const Paper canvas;
  ModTheme::Text(canvas.Dc(), L"HHHH", 10, 10, {ModTheme::kIndigoText, kNothing, kNothing},
                 boldFont);
  EXPECT_EQ(canvas.At(bold.left + 1, bold.top + 5), Rgb(0x4B, 0x00, 0x82));
}

TEST_F(ThemedTextTest, IsIndigoWithAWheatGlowAndAWhiteShadowWhereNothingElseIsGiven) {
  const ModTheme::TextFont font = {.size = 48, .style = ModTheme::kBold};
  const Canvas given(400, 120, Rgb(255, 0, 255));
  const Canvas other(400, 120, Rgb(255, 0, 255));
  ModTheme::Text(given.Dc(), L"HIH", 20, 20, {}, font);
  ModTheme::Text(other.Dc(), L"HIH", 20, 20, {0xFF4B0082, 0xFFF5DEB3, 0xFFFFFFFF}, font);
  EXPECT_GT(given.FindInk().pixels, 500);
  EXPECT_EQ(given.Pixels(), other.Pixels());
}

TEST_F(ThemedTextTest, LeavesNothingBehind) {
  const Paper canvas;
  EXPECT_EQ(LeakedBy([&] { ModTheme::Text(canvas.Dc(), kChinese, 10, 10, {}, {.size = 16}); }),
            ResourceCounts());
}

}  // namespace
}  // namespace tellurvane
