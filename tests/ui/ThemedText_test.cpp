#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <optional>

#include "tests/support/FailingImport.h"
#include "tests/support/GdiPlusSession.h"
#include "tests/support/WindowTestSupport.h"
#include "ui/MemoryContext.h"
#include "ui/ModTheme.h"

namespace tellurvane {
namespace {

constexpr ModTheme::Argb kNothing = 0x00000000;  // its opacity is 0
constexpr ModTheme::Argb kRed = 0xFFFF0000;
constexpr ModTheme::Argb kGreen = 0xFF00FF00;
constexpr ModTheme::Argb kBlue = 0xFF0000FF;
constexpr wchar_t kChinese[] = L"每 5 分鐘執行一次";

class Canvas {
 public:
  explicit Canvas(int width = 400, int height = 120)
      : picture_(MemoryContext::Create(width, height)), width_(width), height_(height) {
    const RECT all = {0, 0, width, height};
    FillRect(Dc(), &all, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
  }

  HDC Dc() const { return picture_->Dc(); }
  int Width() const { return width_; }
  int Height() const { return height_; }
  Color At(int x, int y) const { return PixelOf(Dc(), x, y); }

 private:
  std::optional<MemoryContext> picture_;
  int width_;
  int height_;
};

struct Ink {
  int left = INT_MAX, top = INT_MAX, right = -1, bottom = -1;
  int pixels = 0;

  int Width() const { return right - left + 1; }
  int Height() const { return bottom - top + 1; }
};

Ink InkOn(const Canvas& canvas) {
  Ink ink;
  for (int y = 0; y < canvas.Height(); ++y) {
    for (int x = 0; x < canvas.Width(); ++x) {
      if (canvas.At(x, y) == kWhite) continue;
      ink.left = std::min(ink.left, x);
      ink.right = std::max(ink.right, x);
      ink.top = std::min(ink.top, y);
      ink.bottom = std::max(ink.bottom, y);
      ++ink.pixels;
    }
  }
  return ink;
}

const ModTheme::TextColors kTextOnly = {kBlue, kNothing, kNothing};
const ModTheme::TextColors kGlowOnly = {kNothing, kGreen, kNothing};
const ModTheme::TextColors kShadowOnly = {kNothing, kNothing, kRed};

class ThemedTextTest : public testing::Test {
 protected:
  static Ink InkOf(const std::wstring& text, int x, int y, const ModTheme::TextColors& colors,
                   const ModTheme::TextFont& font = {}) {
    const Canvas canvas;
    ModTheme::Text(canvas.Dc(), text, x, y, colors, font);
    return InkOn(canvas);
  }

 private:
  GdiPlusSession session_;
};

TEST_F(ThemedTextTest, DoublesTheHorizontalPositionOnly) {
  const Ink first = InkOf(L"H", 10, 10, kTextOnly);
  const Ink second = InkOf(L"H", 38, 30, kTextOnly);
  EXPECT_EQ(second.left - first.left, 2 * 28);
  EXPECT_EQ(second.top - first.top, 20);
  // The family leaves a little space at the left, less than half of its size.
  EXPECT_GE(second.left, 76);
  EXPECT_LE(second.left, 76 + 6);
  EXPECT_GE(second.top, 31);
  EXPECT_LE(second.bottom, 31 + 2 * 12);
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
  struct Case {
    const wchar_t* words;
    ModTheme::TextFont font;
  };
  // Thick strokes for the text to cover, narrow gaps for the glow to cover the shadow.
  const Case cases[] = {{L"HIH", {.size = 48, .style = ModTheme::kBold}},
                        {L"鐘聽罐#%@", {.size = 16}}};
  int coveredByText = 0;
  int coveredByGlow = 0;
  for (const auto& [words, font] : cases) {
    const Canvas text, glow, shadow, all;
    ModTheme::Text(text.Dc(), words, 20, 20, kTextOnly, font);
    ModTheme::Text(glow.Dc(), words, 20, 20, kGlowOnly, font);
    ModTheme::Text(shadow.Dc(), words, 20, 20, kShadowOnly, font);
    ModTheme::Text(all.Dc(), words, 20, 20, {kBlue, kGreen, kRed}, font);
    for (int y = 0; y < all.Height(); ++y) {
      for (int x = 0; x < all.Width(); ++x) {
        const bool hasGlow = glow.At(x, y) == Rgb(0, 255, 0);
        const bool hasShadow = shadow.At(x, y) == Rgb(255, 0, 0);
        if (text.At(x, y) == Rgb(0, 0, 255)) {
          ASSERT_EQ(all.At(x, y), Rgb(0, 0, 255)) << x << ", " << y;
          if (hasGlow || hasShadow) ++coveredByText;
        } else if (hasGlow && text.At(x, y) == kWhite) {
          ASSERT_EQ(all.At(x, y), Rgb(0, 255, 0)) << x << ", " << y;
          if (hasShadow) ++coveredByGlow;
        }
      }
    }
  }
  EXPECT_GT(coveredByText, 0);
  EXPECT_GT(coveredByGlow, 0);
}

TEST_F(ThemedTextTest, ReturnsTheWidthOfTheText) {
  const ModTheme::TextFont font = {.size = 16};
  for (const std::wstring text : {L"i", L"wide words", kChinese}) {
    const Canvas canvas;
    const ModTheme::TextSize size = ModTheme::MeasureText(canvas.Dc(), text, font);
    EXPECT_EQ(InkOn(canvas).pixels, 0) << "measuring draws nothing";
    EXPECT_GE(size.height, 16);
    EXPECT_LE(size.height, 32);
    const float width = ModTheme::Text(canvas.Dc(), text, 10, 10, kTextOnly, font);
    EXPECT_EQ(width, size.width);
    const Ink ink = InkOn(canvas);
    EXPECT_GE(width, static_cast<float>(ink.Width()));
    EXPECT_LE(width, static_cast<float>(ink.Width()) + font.size);
  }
  const Canvas canvas;
  EXPECT_EQ(ModTheme::Text(canvas.Dc(), L"", 10, 10, {kBlue, kGreen, kRed}, {}), 0);
  EXPECT_EQ(InkOn(canvas).pixels, 0);
  EXPECT_EQ(ModTheme::Text(nullptr, L"words", 10, 10, {}, {}), 0);
}

TEST_F(ThemedTextTest, NeitherWrapsNorClips) {
  const Canvas canvas(2'000, 60);
  const std::wstring text(200, L'W');
  const float width = ModTheme::Text(canvas.Dc(), text, 0, 0, kTextOnly, {.size = 8});
  const Ink ink = InkOn(canvas);
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

TEST_F(ThemedTextTest, LooksForAnInstalledFaceOnce) {
  FailingImport families({"GdipCreateFontFamilyFromName"});
  families.LetAllThrough();
  const std::wstring installed = ModTheme::AvailableFace(L"Never Seen Before");
  EXPECT_NE(installed, L"Never Seen Before");
  EXPECT_FALSE(installed.empty());
  EXPECT_EQ(ModTheme::AvailableFace(installed), installed);
  const int calls = families.Calls();
  EXPECT_GT(calls, 1);
  EXPECT_EQ(ModTheme::AvailableFace(L"Never Seen Before"), installed);
  EXPECT_EQ(families.Calls(), calls);
}

TEST_F(ThemedTextTest, HasTheSizeTheStyleAndTheColourGiven) {
  const Ink small = InkOf(L"HHHH", 10, 10, kTextOnly, {.size = 12});
  const Ink large = InkOf(L"HHHH", 10, 10, kTextOnly, {.size = 24});
  EXPECT_NEAR(large.Height(), 2 * small.Height(), 2);
  EXPECT_NEAR(large.Width(), 2 * small.Width(), 6);
  const ModTheme::TextFont boldFont = {.size = 24, .style = ModTheme::kBold};
  const Ink bold = InkOf(L"HHHH", 10, 10, kTextOnly, boldFont);
  EXPECT_GT(bold.pixels, large.pixels * 5 / 4);
  const Canvas canvas;
  ModTheme::Text(canvas.Dc(), L"HHHH", 10, 10, {ModTheme::kIndigoText, kNothing, kNothing},
                 boldFont);
  EXPECT_EQ(canvas.At(bold.left + 1, bold.top + 5), Rgb(0x4B, 0x00, 0x82));
}

TEST_F(ThemedTextTest, LeavesNothingBehind) {
  const Canvas canvas;
  EXPECT_EQ(LeakedBy([&] { ModTheme::Text(canvas.Dc(), kChinese, 10, 10, {}, {.size = 16}); }),
            ResourceCounts());
}

}  // namespace
}  // namespace tellurvane
