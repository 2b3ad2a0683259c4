#include "ui/ToolkitFont.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "tests/support/WindowTestSupport.h"
#include "ui/Handle.h"
#include "ui/MemoryContext.h"

namespace tellurvane {
namespace {

constexpr int kSize = 20;

std::vector<Color> Drawn(wchar_t character) {
  const auto picture = MemoryContext::Create(kSize, kSize);
  const SelectedObject font(picture->Dc(), ToolkitFont());
  PatBlt(picture->Dc(), 0, 0, kSize, kSize, WHITENESS);
  TextOutW(picture->Dc(), 0, 0, &character, 1);
  return PixelsIn(picture->Dc(), {0, 0, kSize, kSize});
}

// In any locale. Placeholder boxes would all look alike.
TEST(ToolkitFontTest, ShowsTheChineseOfTheWindows) {
  const std::wstring words = L"新增播放停止設離開年月日時分秒專案名稱";
  std::set<std::vector<Color>> pictures;
  for (const wchar_t character : words) pictures.insert(Drawn(character));
  EXPECT_EQ(pictures.size(), words.size());
}

}  // namespace
}  // namespace tellurvane
