#include "ui/ClsIcon.h"

#include <gtest/gtest.h>

#include "Canvas.h"
#include "tests/support/SourceTree.h"
#include "tests/support/TemporaryFolder.h"

namespace tellurvane {
namespace {

const std::wstring kIconFile = SourceFile("resources/icon101.ico").wstring();

template <typename Value>
void Append(std::string& bytes, Value value) {
  bytes.append(reinterpret_cast<const char*>(&value), sizeof(value));
}

// An icon file of one image.
std::string IconFile(const std::string& image, size_t length, size_t offset = 22, WORD count = 1) {
  std::string bytes;
  for (const WORD word : {WORD{0}, WORD{1}, count}) Append(bytes, word);
  bytes += {16, 0, 5, 0};
  for (const WORD word : {WORD{1}, WORD{32}}) Append(bytes, word);
  Append(bytes, static_cast<DWORD>(length));
  Append(bytes, static_cast<DWORD>(offset));
  return bytes + image;
}

// Not an image.
const std::string kNoise(2'000, '\xA5');
std::string OneIcon() { return IconFile(kNoise, kNoise.size()); }

struct IconCanvas : Canvas {
  IconCanvas() : Canvas(104, 104, Rgb(255, 0, 255)) {}
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
  EXPECT_FALSE(icon.LoadFromFile(L""));
  EXPECT_EQ(icon.Count(), 8) << "an empty path changes nothing";
}

TEST(ClsIconTest, LoadsAtMostSixteenMegabytes) {
  const TemporaryFolder folder;
  const std::wstring path = folder.File(L"large.ico");
  ClsIcon icon;
  std::string bytes = OneIcon();
  bytes.resize(16 << 20);
  for (const bool isTooLarge : {false, true}) {
    if (isTooLarge) bytes += '\0';
    WriteBytes(path, bytes);
    EXPECT_EQ(icon.LoadFromFile(path), !isTooLarge);
    EXPECT_EQ(icon.Count(), isTooLarge ? 0 : 1);
  }
}

TEST(ClsIconTest, KeepsACopyOfTheBytesAndTheFieldsAsStored) {
  std::string bytes = OneIcon();
  ClsIcon icon;
  ASSERT_TRUE(icon.LoadFromData(bytes));
  bytes.assign(bytes.size(), '\0');
  EXPECT_EQ(icon.Count(), 1);
  EXPECT_EQ(icon.Data(0), kNoise);
  EXPECT_EQ(icon.Width(0), 16);
  EXPECT_EQ(icon.Height(0), 0);
  EXPECT_EQ(icon.ColorCount(0), 5);
}

TEST(ClsIconTest, WithoutAnImageLoadingFailsAndKeepsNoDirectory) {
  ClsIcon icon;
  for (const std::string& bytes :
       {std::string(), OneIcon().substr(0, 21), IconFile("", 0, 22, 0), IconFile("", 0, 22, 2)}) {
    ASSERT_TRUE(icon.LoadFromData(OneIcon()));
    EXPECT_FALSE(icon.LoadFromData(bytes)) << bytes.size();
    EXPECT_EQ(icon.Count(), 0);
    EXPECT_EQ(icon.Width(0), 0);
    EXPECT_TRUE(icon.Data(0).empty());
  }
  EXPECT_FALSE(icon.LoadFromFile(L"no such file.ico"));
}

TEST(ClsIconTest, DrawsEachImageInItsOwnSizeWithItsTransparency) {
  ClsIcon icon;
  ASSERT_TRUE(icon.LoadFromFile(kIconFile));
  for (int i = 0; i < icon.Count(); ++i) {
    const IconCanvas canvas;
    EXPECT_TRUE(icon.Draw(canvas.Dc(), 4, 4, i));
    const Ink ink = canvas.FindInk();
    const int side = icon.Width(i);
    EXPECT_GT(ink.pixels, side * side / 5) << i;
    EXPECT_TRUE(ink.IsWithin(4, 4, side, side)) << i;
    EXPECT_FALSE(ink.IsWithin(4, 4, side * 3 / 4, side * 3 / 4)) << i;
  }
  const IconCanvas canvas;
  EXPECT_EQ(LeakedBy([&] { icon.Draw(canvas.Dc(), 4, 4, 0); }), ResourceCounts());
}

TEST(ClsIconTest, DrawsNothingWhereThereIsNoImage) {
  const IconCanvas canvas;
  ClsIcon icon;
  EXPECT_FALSE(icon.Draw(canvas.Dc(), 0, 0, 0));
  ASSERT_TRUE(icon.LoadFromData(OneIcon()));
  EXPECT_FALSE(icon.Draw(canvas.Dc(), 0, 0, 1));
  EXPECT_FALSE(icon.Draw(canvas.Dc(), 0, 0, -1));
  // Outside the file, in part and wholly; shorter than any image; not an image.
  for (const std::string& bytes : {IconFile(kNoise, kNoise.size() + 1),
                                   IconFile(kNoise, 100, 5'000), IconFile(kNoise, 40), OneIcon()}) {
    ASSERT_TRUE(icon.LoadFromData(bytes));
    EXPECT_FALSE(icon.Draw(canvas.Dc(), 0, 0, 0));
  }
  EXPECT_EQ(canvas.FindInk().pixels, 0);
}

}  // namespace
}  // namespace tellurvane
