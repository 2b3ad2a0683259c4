// The mark of the row whose task plays.
#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "mainwin/TaskRow.h"
#include "tests/mainwin/FrmMainFixture.h"
#include "ui/Handle.h"

namespace tellurvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FrmMainMarkTest : public FrmMainTest {
 protected:
  // With no icon but the playing mark.
  void OpenWith(std::initializer_list<std::pair<MediaType, std::wstring>> tasks) {
    Tasks(tasks);
    Open();
    constexpr size_t kPlayingIcon = 4;
    auto mark = std::make_unique<ClsIcon>();
    ASSERT_TRUE(mark->LoadFromFile(L"" TELLURVANE_SOURCE_DIR "/resources/icon105.ico"));
    general->icons.at(kPlayingIcon) = std::move(mark);
  }

  void Start(int row) {
    Select(row);
    window->RunSelectedTask();
  }

  std::vector<int> MarkedRows() const {
    // A selected row has another ground.
    Select(-1);
    Pump();
    UpdateWindow(list);
    std::vector<int> marked;
    for (int row = 0; row < 2; ++row) {
      if (IsMarked(row)) marked.push_back(row);
    }
    return marked;
  }

 private:
  bool IsMarked(int row) const {
    RECT bounds = {LVIR_BOUNDS, 0, 0, 0};
    SendMessageW(list, LVM_GETITEMRECT, static_cast<WPARAM>(row),
                 reinterpret_cast<LPARAM>(&bounds));
    const WindowDc screen(list);
    const int top = static_cast<int>(bounds.top);
    const Color ground = PixelOf(screen.Get(), 10, top + 51);
    return std::ranges::any_of(PixelsIn(screen.Get(), {46, top + 51, 62, top + 67}),
                               [&](Color color) { return color != ground; });
  }
};

constexpr std::pair<MediaType, const wchar_t*> kStation = {kInternetRadio, L"http://a.invalid/"};

TEST_F(FrmMainMarkTest, IsOnTheTaskThatPlaysUntilItStops) {
  OpenWith({kStation, kStation});
  EXPECT_THAT(MarkedRows(), IsEmpty());
  Start(1);
  EXPECT_THAT(MarkedRows(), ElementsAre(1));
  // Also if the machine's clock went back since the other one ran.
  TaskRecord& before = general->tasks[1];
  before.LastRun = before.RunStarted = SerialFromSeconds(SecondsFromSerial(Now()) + 3'600);
  Start(0);
  EXPECT_THAT(MarkedRows(), ElementsAre(0));
  Press(kStop);
  EXPECT_THAT(MarkedRows(), IsEmpty());
  Start(0);
  general->tasks[1].MediaType = kLocalMusic;
  general->tasks[1].Source = folder.File(L"missing.mp3");
  Start(1);
  EXPECT_THAT(MarkedRows(), IsEmpty());
}

TEST_F(FrmMainMarkTest, StaysWithItsTaskThroughTheEditor) {
  const struct {
    const char* what;
    std::function<void(TaskList& tasks)> edit;
    std::vector<int> marked;
  } cases[] = {
      {"the previous one removed", [](TaskList& tasks) { tasks[0].Deleted = true; }, {0}},
      {"the next one removed", [](TaskList& tasks) { tasks[2].Deleted = true; }, {1}},
      {"removed", [](TaskList& tasks) { tasks[1].Deleted = true; }, {}},
      {"the name given to another",
       [](TaskList& tasks) {
         tasks[1].Name = L"other";
         tasks[0].Name = L"task 1";
       },
       {1}},
  };
  for (const auto& [what, edit, marked] : cases) {
    OpenWith({kStation, kStation, kStation});
    Start(1);
    Edit(edit);
    EXPECT_EQ(MarkedRows(), marked) << what;
  }
}

}  // namespace
}  // namespace tellurvane
