// The executable's icons and strips have all sizes for the screen densities.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <utility>
#include <vector>

#include "app/ModGeneral.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/WholeSettings.h"
#include "tests/support/WindowTestSupport.h"
#include "ui/Handle.h"
#include "ui/MemoryContext.h"
#include "ui/Resource.h"

namespace tellurvane {
namespace {

constexpr Color kWhite = Rgb(255, 255, 255);
constexpr Color kNight = Rgb(0x1E, 0x0A, 0x3C);
constexpr Color kWheat = Rgb(0xF5, 0xDE, 0xB3);

// A copy of what a part of a context shows.
class Pixels {
 public:
  Pixels(HDC context, int x, int y, int width, int height) : width_(width), height_(height) {
    for (int row = 0; row < height; ++row) {
      for (int column = 0; column < width; ++column) {
        colors_.push_back(PixelOf(context, x + column, y + row));
      }
    }
  }

  Color At(int x, int y) const { return colors_[static_cast<size_t>(y * width_ + x)]; }
  int CountOf(Color color) const { return static_cast<int>(std::ranges::count(colors_, color)); }
  int Area() const { return width_ * height_; }
  bool operator<(const Pixels& other) const { return colors_ < other.colors_; }

 private:
  int width_;
  int height_;
  std::vector<Color> colors_;
};

TEST(ArtworkTest, TheListsIconsAreDrawnInEverySize) {
  const TemporaryFolder folder;
  WriteBytes(folder.File(L"Setting.ini"), WholeSettings().Bytes());
  ModGeneral general(folder.Path());
  general.LoadIcons();
  for (const auto& icon : general.icons) {
    ASSERT_EQ(icon->Count(), 8);
    for (int image = 0; image < icon->Count(); ++image) {
      const int side = icon->Width(image);
      const auto picture = MemoryContext::Create(side, side);
      EXPECT_TRUE(icon->Draw(picture->Dc(), 0, 0, image));
      EXPECT_EQ(icon->Data(image).size(), icon->Length(image));
      const Pixels drawn(picture->Dc(), 0, 0, side, side);
      EXPECT_GT(drawn.Area() - drawn.CountOf(drawn.At(0, 0)), drawn.Area() / 3) << side;
    }
  }
}

// The sizes of an icon's images in the order of its directory; 0 is 256.
std::vector<int> SidesOf(const wchar_t* name) {
  ClsIcon icon;
  EXPECT_TRUE(icon.LoadFromData(IconGroupBytes(name)));
  std::vector<int> sides;
  for (int image = 0; image < icon.Count(); ++image) sides.push_back(icon.Width(image));
  return sides;
}

// True if the system draws the icon, with a transparent corner.
bool HasInk(const wchar_t* name, int side) {
  const UniqueIcon icon(static_cast<HICON>(
      LoadImageW(GetModuleHandleW(nullptr), name, IMAGE_ICON, side, side, LR_DEFAULTCOLOR)));
  if (!icon) return false;
  const auto picture = MemoryContext::Create(side, side);
  const RECT all = {0, 0, side, side};
  const UniqueBrush brush(CreateSolidBrush(kWhite));
  FillRect(picture->Dc(), &all, brush.Get());
  DrawIconEx(picture->Dc(), 0, 0, icon.Get(), side, side, 0, nullptr, DI_NORMAL);
  const Pixels drawn(picture->Dc(), 0, 0, side, side);
  const int white = drawn.CountOf(kWhite);
  return drawn.At(0, 0) == kWhite && white < drawn.Area() * 2 / 3;
}

TEST(ArtworkTest, TheIconGroupsHaveEverySize) {
  const std::vector<int> small = {16, 20, 24, 28, 32, 36, 40, 48};
  std::vector<int> window = small;
  window.insert(window.end(), {56, 64, 72, 80, 96, 0});
  const struct {
    const wchar_t* name;
    std::vector<int> sides;
  } icons[] = {{L"AAA", window},
               {L"CLOSE", small},
               {L"CLOSEHOT", small},
               {L"TRYING", small},
               {L"FAILED", small}};
  for (const auto& [name, sides] : icons) {
    EXPECT_EQ(SidesOf(name), sides) << name;
    for (const int side : sides) EXPECT_TRUE(HasInk(name, side == 0 ? 256 : side)) << name << side;
  }
}

struct Strip {
  explicit Strip(int id)
      : bitmap(LoadBitmapW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(id))),
        context(CreateCompatibleDC(nullptr)),
        selected(context.Get(), bitmap.Get()) {}

  std::pair<int, int> Size() const {
    BITMAP facts = {};
    GetObjectW(bitmap.Get(), sizeof(facts), &facts);
    return {facts.bmWidth, facts.bmHeight};
  }
  Pixels Cell(int index, int width, int height) const {
    return {context.Get(), index * width, 0, width, height};
  }

  UniqueBitmap bitmap;
  UniqueMemoryDc context;
  SelectedObject selected;
};

TEST(ArtworkTest, ToolbarHasFiveImagesInEverySize) {
  for (const auto& [id, side] : {std::pair(101, 16),
                                 {10120, 20},
                                 {10124, 24},
                                 {10128, 28},
                                 {10132, 32},
                                 {10136, 36},
                                 {10140, 40},
                                 {10148, 48}}) {
    SCOPED_TRACE(id);
    const Strip strip(id);
    ASSERT_EQ(strip.Size(), std::pair(5 * side, side));
    std::set<Pixels> looks;
    for (int i = 0; i < 5; ++i) {
      const Pixels cell = strip.Cell(i, side, side);
      looks.insert(cell);
      const int masked = cell.CountOf(kWhite);
      EXPECT_EQ(cell.At(0, 0), kWhite) << i;
      EXPECT_GT(masked, side * side / 5) << i;
      EXPECT_LT(masked, side * side * 4 / 5) << i;
    }
    EXPECT_EQ(looks.size(), 5U);
  }
}

TEST(ArtworkTest, DigitsHaveTheirCellsInEverySize) {
  const struct {
    int id, width, height;
  } strips[] = {{102, 16, 25},   {10224, 24, 38}, {10228, 28, 44}, {10232, 32, 50},
                {10236, 36, 56}, {10240, 40, 63}, {10248, 48, 75}};
  constexpr int kBlank = 11;
  constexpr int kCells = 13;
  for (const auto& [id, width, height] : strips) {
    SCOPED_TRACE(id);
    const Strip strip(id);
    ASSERT_EQ(strip.Size(), std::pair(kCells * width, height));
    std::set<Pixels> looks;
    for (int i = 0; i < kCells; ++i) {
      const Pixels cell = strip.Cell(i, width, height);
      looks.insert(cell);
      EXPECT_EQ(cell.At(0, height / 2), kNight) << i;
      EXPECT_EQ(cell.At(width - 1, height - 1), kNight) << i;
      const int ink = cell.Area() - cell.CountOf(kNight);
      if (i == kBlank) {
        EXPECT_EQ(ink, 0);
      } else {
        EXPECT_GT(ink, width * height / 10) << i;
        EXPECT_GT(cell.CountOf(kWheat), 0) << i;
      }
    }
    EXPECT_EQ(looks.size(), static_cast<size_t>(kCells));
  }
}

}  // namespace
}  // namespace tellurvane
