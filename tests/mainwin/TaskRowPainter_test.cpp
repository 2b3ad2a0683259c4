#include "mainwin/TaskRowPainter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <memory>
#include <set>
#include <utility>
#include <vector>

#include "app/ModGeneral.h"
#include "base/LocaleDates.h"
#include "tests/support/Moments.h"
#include "tests/support/SourceTree.h"
#include "tests/support/WindowTestSupport.h"
#include "tests/ui/Canvas.h"
#include "ui/Handle.h"
#include "ui/MemoryContext.h"
#include "ui/ModTheme.h"

namespace tellurvane {
namespace {

constexpr int kWidth = 330;
// The icon of a row, and the mark on its lower right corner.
constexpr RECT kIconPlace = {22, 27, 54, 59};
constexpr RECT kMarkPlace = {46, 51, 62, 67};
constexpr RECT kBothPlaces = {22, 27, 62, 67};

// In the order of ModGeneral.
constexpr const wchar_t* kIconFiles[] = {L"icon101", L"icon102", L"icon103", L"icon104", L"icon105",
                                         L"icon106", L"icon107", L"trying",  L"failed"};

std::wstring IconFile(const std::wstring& name) {
  return SourceFile("resources").wstring() + L"\\" + name + L".ico";
}

// Draws an icon's file by the system's own routines.
void DrawIconFile(HDC context, const std::wstring& name, const RECT& place) {
  const int side = static_cast<int>(place.right - place.left);
  const UniqueIcon icon(static_cast<HICON>(
      LoadImageW(nullptr, IconFile(name).c_str(), IMAGE_ICON, side, side, LR_LOADFROMFILE)));
  ASSERT_TRUE(icon) << "no file";
  DrawIconEx(context, place.left, place.top, icon.Get(), side, side, 0, nullptr, DI_NORMAL);
}

class TaskRowPainterTest : public testing::Test {
 protected:
  static void SetUpTestSuite() { ASSERT_TRUE(StartGdiplus()); }
  static void TearDownTestSuite() { StopGdiplus(); }

  void SetUp() override {
    task.Name = L"休息一下";
    task.Enabled = true;
    task.Interval = 5;
    task.MediaType = kReminderNote;
    task.LastRun = task.NextRun = At(2011, 2, 14, 12);
  }

  void LoadIcons() {
    for (size_t i = 0; i < icons.size(); ++i) {
      icons[i] = std::make_unique<ClsIcon>();
      ASSERT_TRUE(icons[i]->LoadFromFile(IconFile(kIconFiles[i])));
    }
  }

  void Paint(RowMark mark = RowMark::kNone) {
    TaskRowPainter(icons, AppendLocaleDateText).Paint(row, task, mark);
  }

  // How many pixels of an area have another colour than its first one.
  ptrdiff_t InkIn(const RECT& area) const {
    const std::vector<Color> pixels = PixelsIn(picture.Dc(), area);
    return std::ranges::count_if(pixels, [&](Color color) { return color != pixels[0]; });
  }

  // The place of the icon and its mark, as painted, and as the files of the icons have it.
  std::vector<Color> IconOf(int mediaType, RowMark mark = RowMark::kNone) {
    task.MediaType = mediaType;
    Paint(mark);
    return PixelsIn(picture.Dc(), kBothPlaces);
  }
  std::vector<Color> WithIconFiles(std::initializer_list<std::pair<const wchar_t*, RECT>> files) {
    task.MediaType = -1;
    Paint();
    for (const auto& [name, where] : files) DrawIconFile(picture.Dc(), name, where);
    return PixelsIn(picture.Dc(), kBothPlaces);
  }

  TaskRecord task;
  std::array<std::unique_ptr<ClsIcon>, 9> icons;
  MemoryContext picture = MemoryContext::Create(kWidth, kTaskRowHeight).value();
  RowPicture row = {.context = picture.Dc(), .width = kWidth, .height = kTaskRowHeight};
};

TEST_F(TaskRowPainterTest, WritesFourLinesBesideTheIcon) {
  Paint();
  EXPECT_GT(InkIn({76, 2, 200, 18}), 50) << "the name";
  for (const LONG y : {24, 44, 64}) {
    EXPECT_GT(InkIn({76, y, 140, y + 14}), 50) << "the label at " << y;
    EXPECT_GT(InkIn({150, y, kWidth, y + 14}), 50) << "the value at " << y;
  }
}

TEST_F(TaskRowPainterTest, WritesWithAWheatGlowAndAWhiteShadow) {
  constexpr int kWide = 500;  // nothing is cut
  const Canvas drawn(kWide, kTaskRowHeight, kBlack), expected(kWide, kTaskRowHeight, kWhite);
  for (const RowLine& line : TaskRowLines(task, AppendLocaleDateText)) {
    ModTheme::TextFont font = {L"Arial Unicode MS", 12};
    if (line.font == RowFont::kName) font = {font.face, 14, ModTheme::kBold};
    if (line.font == RowFont::kValue) font.size = 13;
    ModTheme::Text(expected.Dc(), line.text, line.x, line.y, {line.color, 0xFFF5DEB3, 0xFFFFFFFF},
                   font);
  }
  TaskRowPainter(icons, AppendLocaleDateText)
      .Paint({.context = drawn.Dc(), .width = kWide, .height = kTaskRowHeight}, task,
             RowMark::kNone);
  EXPECT_EQ(drawn.Pixels(), expected.Pixels());
}

TEST_F(TaskRowPainterTest, ShowsTheIconOfTheKindOfTaskAndTheStateOnItsCorner) {
  LoadIcons();
  const std::pair<MediaType, const wchar_t*> kinds[] = {{kInternetRadio, L"icon101"},
                                                        {kLocalMusic, L"icon102"},
                                                        {kApplication, L"icon103"},
                                                        {kReminderNote, L"icon104"}};
  const std::vector<Color> none = IconOf(-1);
  std::set<std::vector<Color>> looks = {none};
  for (const auto& [type, file] : kinds) {
    looks.insert(IconOf(type));
    EXPECT_EQ(IconOf(type), WithIconFiles({{file, kIconPlace}})) << file;
  }
  EXPECT_EQ(looks.size(), 5U) << "each is another one";
  EXPECT_EQ(IconOf(4), none) << "of no kind";
  const std::pair<RowMark, const wchar_t*> marks[] = {{RowMark::kPlaying, L"icon105"},
                                                      {RowMark::kDisabled, L"icon106"},
                                                      {RowMark::kDue, L"icon107"},
                                                      {RowMark::kTrying, L"trying"},
                                                      {RowMark::kFailed, L"failed"}};
  for (const auto& [mark, file] : marks) {
    EXPECT_EQ(IconOf(kLocalMusic, mark),
              WithIconFiles({{L"icon102", kIconPlace}, {file, kMarkPlace}}))
        << file;
  }
}

TEST_F(TaskRowPainterTest, TellsOddRowsAndTheSelectedOneApart) {
  std::set<Color> grounds;
  for (const auto& [isOdd, isSelected] : {std::pair{false, false}, {true, false}, {false, true}}) {
    row.isOdd = isOdd;
    row.isSelected = isSelected;
    Paint();
    grounds.insert(PixelOf(picture.Dc(), 10, kTaskRowHeight / 2));
  }
  EXPECT_EQ(grounds.size(), 3U);
}

TEST_F(TaskRowPainterTest, LeavesTheRightMarginFreeHoweverLongTheName) {
  task.Name = std::wstring(500, L'長');
  Paint();
  EXPECT_EQ(InkIn({kWidth - 3, 0, kWidth, kTaskRowHeight}), 0);
}

TEST_F(TaskRowPainterTest, CutsOnlyWhatDoesNotFit) {
  const auto fitting = [&](const std::wstring& text, int width, RowFont font = RowFont::kName) {
    return FittingText(picture.Dc(), text, width, font);
  };
  EXPECT_EQ(fitting(L"休息", 500), L"休息");
  EXPECT_EQ(fitting(L"", 500), L"");
  const std::wstring cut = fitting(std::wstring(100, L'長'), 200);
  EXPECT_TRUE(cut.ends_with(L"長…"));
  EXPECT_LT(cut.size(), 20U);
  EXPECT_GT(cut.size(), 8U) << "as much as fits";
  EXPECT_EQ(fitting(L"長長", 0), L"…");
  const std::wstring rule = fitting(std::wstring(35, L'_'), 100, RowFont::kRule);
  EXPECT_FALSE(rule.empty());
  EXPECT_LT(rule.size(), 35U);
  EXPECT_EQ(rule.find_first_not_of(L'_'), std::wstring::npos) << "without an ellipsis";
  std::wstring faces;
  for (int i = 0; i < 50; ++i) faces += L"\U0001F600";
  for (int width = 20; width < 200; ++width) {
    EXPECT_EQ(fitting(faces, width).size() % 2, 1U) << "whole pairs and the ellipsis, at " << width;
  }
}

}  // namespace
}  // namespace tellurvane
