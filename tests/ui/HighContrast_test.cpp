// Painting and controls under high contrast.
#include <windows.h>

#include <gtest/gtest.h>
#include <richedit.h>

#include "Canvas.h"
#include "ControlTestSupport.h"
#include "SliderTestSupport.h"
#include "tests/support/ContrastScheme.h"
#include "tests/support/FormProbe.h"
#include "tests/support/GdiPlusSession.h"
#include "ui/ModTheme.h"
#include "ui/Strip.h"
#include "ui/clsLictView.h"

namespace tellurvane {
namespace {

constexpr Color kOurs = Rgb(244, 241, 250);
constexpr Color kAdaptive = Adaptive(kOurs, COLOR_HIGHLIGHT);

TEST(HighContrastTest, AnAdaptiveColorGivesWayToTheSystems) {
  EXPECT_EQ(ModTheme::TranslateColor(kAdaptive), kOurs);
  {
    const ContrastScheme scheme(kBlackScheme, nullptr);
    EXPECT_EQ(ModTheme::TranslateColor(kAdaptive), Color{RGB(26, 235, 255)});
    EXPECT_EQ(ModTheme::TranslateColor(Adaptive(kOurs, COLOR_SCROLLBAR)),
              GetSysColor(COLOR_SCROLLBAR));  // index 0
    EXPECT_EQ(ModTheme::TranslateColor(kOurs), kOurs);
  }
  EXPECT_EQ(ModTheme::TranslateColor(kAdaptive), kOurs);
}

TEST(HighContrastTest, HighlightsAndBoxesAreFilledInOneColor) {
  const ContrastScheme scheme(kBlackScheme, nullptr);
  const Color base = GetSysColor(COLOR_HIGHLIGHT);
  for (const auto& draw : {ModTheme::SimpleHighlight, ModTheme::RichHighlight}) {
    const Canvas canvas(40, 20, kWhite);
    draw(canvas.Dc(), 0, 0, 40, 20, kWhite, kAdaptive);
    for (int y = 0; y < 20; ++y) {
      for (int x = 0; x < 40; ++x) ASSERT_EQ(canvas.At(x, y), base) << x << ", " << y;
    }
  }
  const Canvas canvas(40, 20, kWhite);
  ModTheme::FramedBox(canvas.Dc(), 0, 0, 40, 20, kAdaptive);
  EXPECT_EQ(canvas.At(0, 0), base);
  EXPECT_EQ(canvas.At(20, 10), GetSysColor(COLOR_WINDOW));
}

TEST(HighContrastTest, ATextHasNeitherGlowNorShadow) {
  const GdiPlusSession gdiPlus;
  const ContrastScheme scheme(kBlackScheme, nullptr);
  constexpr Color kGround = Rgb(1, 2, 3);
  const Canvas canvas(200, 40, kGround);
  ModTheme::Text(canvas.Dc(), L"早晨新聞", 5, 5, {.plain = SystemColor(COLOR_BTNTEXT)},
                 {.size = 16, .style = ModTheme::kBold});
  const Ink ink = canvas.FindInk();
  ASSERT_GT(ink.pixels, 50);
  // Blends of the ground and a yellow text have no blue. The glow and the shadow have.
  for (int y = ink.top; y <= ink.bottom; ++y) {
    for (int x = ink.left; x <= ink.right; ++x) {
      ASSERT_LE(canvas.At(x, y) >> 16, kGround >> 16) << x << ", " << y;
    }
  }
}

TEST(HighContrastTest, PicturesHaveAPlateOnADarkGroundOnly) {
  const struct {
    const ContrastColors& scheme;
    int ground;
    bool hasPlate;
  } cases[] = {{kBlackScheme, COLOR_WINDOW, true},
               {kBlackScheme, COLOR_HIGHLIGHT, false},
               {kWhiteScheme, COLOR_WINDOW, false},
               {kWhiteScheme, COLOR_HIGHLIGHT, true}};
  for (const auto& [colors, ground, hasPlate] : cases) {
    const ContrastScheme scheme(colors, nullptr);
    const Canvas canvas(40, 40, kBlack);
    ModTheme::PicturePlate(canvas.Dc(), 10, 10, 20, 20, SystemColor(ground));
    EXPECT_EQ(canvas.FindInk().pixels, hasPlate ? 24 * 24 : 0) << ground;
  }
  const Canvas canvas(40, 40, kWhite);
  ModTheme::PicturePlate(canvas.Dc(), 10, 10, 20, 20, kBlack);
  EXPECT_EQ(canvas.FindInk().pixels, 0) << "without high contrast";
}

TEST(HighContrastTest, AnOutlineSurroundsThePicturesOfAStrip) {
  constexpr Color kOutline = Rgb(254, 254, 254);
  const UniqueBitmap strip(CreateBitmap(5, 5, 1, 32, nullptr));
  const UniqueMemoryDc context(CreateCompatibleDC(nullptr));
  {
    const SelectedObject selected(context.Get(), strip.Get());
    PatBlt(context.Get(), 0, 0, 5, 5, WHITENESS);
    SetPixel(context.Get(), 2, 2, kBlack);
  }
  OutlinePictures(strip.Get(), kWhite);
  const SelectedObject selected(context.Get(), strip.Get());
  for (int y = 0; y < 5; ++y) {
    for (int x = 0; x < 5; ++x) {
      const int distance = std::abs(x - 2) + std::abs(y - 2);
      const Color expected = distance == 0 ? kBlack : distance == 1 ? kOutline : kWhite;
      EXPECT_EQ(PixelOf(context.Get(), x, y), expected) << x << ", " << y;
    }
  }
}

// The colours that a control asks its host for.
struct HostColors {
  Color ink = 0;
  Color ground = 0;
};
HostColors ColorsOf(const HostedControl& hosted, UINT message) {
  const UniqueMemoryDc context(CreateCompatibleDC(nullptr));
  SendMessageW(hosted.host.hwnd(), message, reinterpret_cast<WPARAM>(context.Get()),
               reinterpret_cast<LPARAM>(hosted.control.hwnd()));
  return {GetTextColor(context.Get()), GetBkColor(context.Get())};
}

TEST(HighContrastTest, ButtonsAndLabelsTakeTheButtonColors) {
  for (const ControlKind kind :
       {ControlKind::kCheckBox, ControlKind::kOptionButton, ControlKind::kLabel}) {
    HostedControl hosted(kind);
    hosted.host.BackColor(ModTheme::kWindowGround);
    const ContrastScheme scheme(kBlackScheme, hosted.form.hwnd());
    const HostColors colors = ColorsOf(hosted, WM_CTLCOLORSTATIC);
    EXPECT_EQ(colors.ink, GetSysColor(COLOR_BTNTEXT)) << NameOf(kind);
    EXPECT_EQ(colors.ground, GetSysColor(COLOR_BTNFACE)) << NameOf(kind);
    EXPECT_EQ(PixelOf(hosted.host.Dc(), 1, 1), GetSysColor(COLOR_BTNFACE)) << "the host itself";
  }
}

TEST(HighContrastTest, ARichEditBoxTakesTheNewColorsAtOnce) {
  HostedControl hosted(ControlKind::kRichEditBox, 1);
  const ContrastScheme scheme(kBlackScheme, hosted.form.hwnd());
  CHARFORMATW format = {};
  format.cbSize = sizeof(format);
  hosted.Send(EM_GETCHARFORMAT, SCF_DEFAULT, reinterpret_cast<LPARAM>(&format));
  EXPECT_EQ(format.crTextColor, GetSysColor(COLOR_WINDOWTEXT));
}

TEST(HighContrastTest, ASettingThatChangesNoColorDisturbsNoTextAndNoList) {
  HostedControl hosted(ControlKind::kRichEditBox, 1);
  PictureBox host;
  host.Create({.parent = hosted.form.hwnd(), .x = 200, .width = 100, .height = 100});
  clsLictView list;
  list.Create(host);
  CaughtMessage format(hosted.control.hwnd(), EM_SETCHARFORMAT);
  CaughtMessage ground(list.hwnd(), LVM_SETBKCOLOR);
  SendMessageW(hosted.form.hwnd(), WM_SETTINGCHANGE, 0, 0);
  EXPECT_TRUE(format.Taken().empty());
  EXPECT_TRUE(ground.Taken().empty());
}

TEST(HighContrastTest, AListTakesTheNewColorsAtOnce) {
  TestForm form;
  PictureBox host;
  host.Create({.parent = form.hwnd(), .width = 100, .height = 100});
  clsLictView list;
  list.Create(host);
  const ContrastScheme scheme(kBlackScheme, form.hwnd());
  EXPECT_EQ(static_cast<Color>(SendMessageW(list.hwnd(), LVM_GETBKCOLOR, 0, 0)),
            GetSysColor(COLOR_WINDOW));
}

TEST_F(SliderTest, UnderHighContrastASliderHasOnlyTheSystemsColors) {
  slider.PostRender = [&](bool) { slider.PrintText(L"50 %", Rgb(151, 151, 151)); };
  slider.Value(50);
  host.BackColor(ModTheme::kWindowGround);
  const ContrastScheme scheme(kBlackScheme, form.hwnd());
  EXPECT_EQ(PixelOf(host.Dc(), 0, 0), GetSysColor(COLOR_HIGHLIGHT)) << "frame";
  EXPECT_EQ(PixelOf(host.Dc(), 10, 2), GetSysColor(COLOR_HIGHLIGHT)) << "filled part";
  EXPECT_EQ(PixelOf(host.Dc(), 60, 2), GetSysColor(COLOR_WINDOW)) << "rest";
  EXPECT_EQ(PixelOf(host.Dc(), 68, 2), GetSysColor(COLOR_BTNFACE)) << "beside it";
  host.SetFocus();
  EXPECT_EQ(PixelOf(host.Dc(), 0, 0), GetSysColor(COLOR_WINDOWTEXT)) << "focus frame";
  form.SetFocus();
  slider.Enabled(false);
  EXPECT_EQ(PixelOf(host.Dc(), 0, 0), GetSysColor(COLOR_GRAYTEXT));
}

}  // namespace
}  // namespace tellurvane
