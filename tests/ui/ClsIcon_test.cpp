#include "ui/ClsIcon.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

#include "tests/support/WindowTestSupport.h"
#include "ui/MemoryContext.h"

namespace tellurvane {
namespace {

const std::wstring kIconFile = L"" TELLURVANE_SOURCE_DIR "/resources/icon101.ico";
constexpr Color kGround = Rgb(255, 0, 255);
constexpr int kSide = 16;
constexpr int kCanvas = 104;

template <typename Value>
void Append(std::string& bytes, Value value) {
  bytes.append(reinterpret_cast<const char*>(&value), sizeof(value));
}

// An image of 16 by 16 pixels in one opaque colour, its first row from the top left to the ground.
std::string Image(Color color) {
  std::string bytes;
  BITMAPINFOHEADER header = {};
  header.biSize = sizeof(header);
  header.biWidth = kSide;
  header.biHeight = 2 * kSide;  // the mask below the picture counts
  header.biPlanes = 1;
  header.biBitCount = 32;
  Append(bytes, header);
  const DWORD pixel = 0xFF000000U | ((color & 0xFF) << 16) | (color & 0xFF00) | (color >> 16);
  for (int y = kSide - 1; y >= 0; --y) {
    for (int x = 0; x < kSide; ++x) Append(bytes, y == 0 ? 0UL : pixel);
  }
  for (int y = kSide - 1; y >= 0; --y) Append(bytes, y == 0 ? 0xFFFFFFFFUL : 0UL);
  return bytes;
}

std::string Entry(size_t length, size_t offset, char side = kSide) {
  std::string bytes = {side, side, '\x05', '\0'};
  Append<WORD>(bytes, 1);
  Append<WORD>(bytes, 32);
  Append(bytes, static_cast<DWORD>(length));
  Append(bytes, static_cast<DWORD>(offset));
  return bytes;
}

std::string Header(WORD count) {
  std::string bytes;
  Append<WORD>(bytes, 0);
  Append<WORD>(bytes, 1);
  Append(bytes, count);
  return bytes;
}

std::string OneIcon(Color color = Rgb(10, 200, 30)) {
  const std::string image = Image(color);
  return Header(1) + Entry(image.size(), 22) + image;
}

class Canvas {
 public:
  Canvas() : picture_(MemoryContext::Create(kCanvas, kCanvas)) {
    const RECT all = {0, 0, kCanvas, kCanvas};
    const UniqueBrush brush(CreateSolidBrush(kGround));
    FillRect(Dc(), &all, brush.Get());
  }

  HDC Dc() const { return picture_->Dc(); }

  // How many pixels are not the ground's, and how many of them lie outside the rectangle.
  std::pair<int, int> InkInsideAndOutside(int x, int y, int side) const {
    int inside = 0, outside = 0;
    for (int row = 0; row < kCanvas; ++row) {
      for (int column = 0; column < kCanvas; ++column) {
        if (PixelOf(Dc(), column, row) == kGround) continue;
        const bool isInside = column >= x && column < x + side && row >= y && row < y + side;
        ++(isInside ? inside : outside);
      }
    }
    return {inside, outside};
  }

 private:
  std::optional<MemoryContext> picture_;
};

TEST(ClsIconTest, LoadsAFile) {
  ClsIcon icon;
  ASSERT_TRUE(icon.LoadFromFile(kIconFile));
  ASSERT_EQ(icon.Count(), 8);
  const int sides[] = {32, 40, 48, 56, 64, 72, 80, 96};
  for (int i = 0; i < 8; ++i) {
    EXPECT_EQ(icon.Width(i), sides[i]);
    EXPECT_EQ(icon.Height(i), sides[i]);
    EXPECT_EQ(icon.BitCount(i), 32);
    EXPECT_EQ(icon.ColorCount(i), 0);
    EXPECT_TRUE(icon.Data(i).starts_with("\x89PNG"));
    EXPECT_EQ(icon.Data(i).size(), icon.Length(i));
  }
}

TEST(ClsIconTest, KeepsACopyOfTheBytes) {
  std::string bytes = OneIcon();
  const std::string image = bytes.substr(22);
  ClsIcon icon;
  ASSERT_TRUE(icon.LoadFromData(bytes));
  bytes.assign(bytes.size(), '\0');
  EXPECT_EQ(icon.Count(), 1);
  EXPECT_EQ(icon.Data(0), image);
  EXPECT_EQ(icon.ColorCount(0), 5);
}

TEST(ClsIconTest, CountOfZeroIsFalseAndKeepsNoDirectory) {
  ClsIcon icon;
  ASSERT_TRUE(icon.LoadFromData(OneIcon()));
  EXPECT_FALSE(icon.LoadFromData(Header(0) + Entry(10, 0)));
  EXPECT_EQ(icon.Count(), 0);
  EXPECT_EQ(icon.Width(0), 0);
  EXPECT_TRUE(icon.Data(0).empty());
}

TEST(ClsIconTest, DoesNotCheckTheReservedFieldAndTheType) {
  std::string bytes = OneIcon();
  bytes[0] = bytes[2] = '\x7F';
  ClsIcon icon;
  EXPECT_TRUE(icon.LoadFromData(bytes));
}

TEST(ClsIconTest, IsFalseForWhatIsNoIcon) {
  ClsIcon icon;
  EXPECT_FALSE(icon.LoadFromData(""));
  EXPECT_FALSE(icon.LoadFromData(OneIcon().substr(0, 21)));
  EXPECT_FALSE(icon.LoadFromData(Header(2) + Entry(1, 1)));
  EXPECT_FALSE(icon.LoadFromFile(L"no such file.ico"));
}

TEST(ClsIconTest, EmptyPathChangesNothing) {
  ClsIcon icon;
  ASSERT_TRUE(icon.LoadFromData(OneIcon()));
  EXPECT_FALSE(icon.LoadFromFile(L""));
  EXPECT_EQ(icon.Count(), 1);
}

TEST(ClsIconTest, ReturnsAStoredWidthOfZeroAsZero) {
  ClsIcon icon;
  ASSERT_TRUE(icon.LoadFromData(Header(1) + Entry(0, 0, '\0')));
  EXPECT_EQ(icon.Width(0), 0);
  EXPECT_EQ(icon.Height(0), 0);
}

TEST(ClsIconTest, DrawsAnImageWithItsColorsAndItsTransparency) {
  ClsIcon icon;
  ASSERT_TRUE(icon.LoadFromData(OneIcon(Rgb(10, 200, 30))));
  const Canvas canvas;
  EXPECT_TRUE(icon.Draw(canvas.Dc(), 5, 7, 0));
  EXPECT_EQ(PixelOf(canvas.Dc(), 5, 7), kGround);
  EXPECT_EQ(PixelOf(canvas.Dc(), 5, 8), Rgb(10, 200, 30));
  EXPECT_EQ(PixelOf(canvas.Dc(), 20, 22), Rgb(10, 200, 30));
  EXPECT_EQ(canvas.InkInsideAndOutside(5, 8, 16), std::pair(15 * 16, 0));
}

TEST(ClsIconTest, DrawsEachImageInItsOwnSize) {
  ClsIcon icon;
  ASSERT_TRUE(icon.LoadFromFile(kIconFile));
  for (int i = 0; i < icon.Count(); ++i) {
    const Canvas canvas;
    EXPECT_TRUE(icon.Draw(canvas.Dc(), 4, 4, i));
    const auto [inside, outside] = canvas.InkInsideAndOutside(4, 4, icon.Width(i));
    EXPECT_GT(inside, icon.Width(i) * icon.Height(i) / 5) << i;
    EXPECT_EQ(outside, 0) << i;
    const auto smaller = canvas.InkInsideAndOutside(4, 4, icon.Width(i) * 3 / 4);
    EXPECT_GT(smaller.second, 0) << i;
  }
}

TEST(ClsIconTest, DrawsNothingWhereThereIsNoImage) {
  const Canvas canvas;
  ClsIcon icon;
  EXPECT_FALSE(icon.Draw(canvas.Dc(), 0, 0, 0));
  ASSERT_TRUE(icon.LoadFromData(OneIcon()));
  EXPECT_FALSE(icon.Draw(canvas.Dc(), 0, 0, 1));
  EXPECT_FALSE(icon.Draw(canvas.Dc(), 0, 0, -1));
  // Outside the file, in part and wholly; shorter than any image; not an image.
  const std::string image = Image(0);
  const std::string noise(2'000, '\xA5');
  for (const std::string& bytes :
       {Header(1) + Entry(image.size() + 1, 22) + image, Header(1) + Entry(100, 5'000) + image,
        Header(1) + Entry(40, 22) + image, Header(1) + Entry(2'000, 22) + noise}) {
    ASSERT_TRUE(icon.LoadFromData(bytes));
    EXPECT_FALSE(icon.Draw(canvas.Dc(), 0, 0, 0));
  }
  EXPECT_EQ(canvas.InkInsideAndOutside(0, 0, 0), std::pair(0, 0));
}

TEST(ClsIconTest, SurvivesAnyBytesInTheHeaderOfAnImage) {
  const std::string whole = OneIcon();
  int drawn = 0;
  for (size_t at = 0; at < 22 + sizeof(BITMAPINFOHEADER); ++at) {
    for (const char value : {'\0', '\x01', '\x7F', '\x80', '\xFF'}) {
      std::string bytes = whole;
      bytes[at] = value;
      const Canvas canvas;
      ClsIcon icon;
      icon.LoadFromData(bytes);
      const bool isDrawn = icon.Draw(canvas.Dc(), 0, 0, 0);
      drawn += isDrawn ? 1 : 0;
      // In its own size, which for the system is that of any icon where it is 0.
      const bool isUsual = icon.Width(0) == 0 || icon.Height(0) == 0;
      const int side =
          std::max({icon.Width(0), icon.Height(0), isUsual ? GetSystemMetrics(SM_CXICON) : 0});
      const auto [inside, outside] = canvas.InkInsideAndOutside(0, 0, side);
      EXPECT_EQ(outside, 0) << at << " is " << static_cast<int>(value);
      EXPECT_TRUE(isDrawn || inside == 0) << at << " is " << static_cast<int>(value);
    }
  }
  EXPECT_GT(drawn, 0);
  EXPECT_LT(drawn, 5 * static_cast<int>(22 + sizeof(BITMAPINFOHEADER)));
}

TEST(ClsIconTest, LeavesNothingBehind) {
  const Canvas canvas;
  const std::string broken = Header(1) + Entry(2'000, 22) + std::string(2'000, '\xA5');
  EXPECT_EQ(LeakedBy([&] {
              ClsIcon icon;
              icon.LoadFromData(OneIcon());
              icon.Draw(canvas.Dc(), 0, 0, 0);
              icon.LoadFromFile(kIconFile);
              icon.Draw(canvas.Dc(), 0, 0, 2);
              icon.LoadFromData(broken);
              icon.Draw(canvas.Dc(), 0, 0, 0);
            }),
            ResourceCounts());
}

}  // namespace
}  // namespace tellurvane
