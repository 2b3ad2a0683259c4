// The marks of the rows, and the reason of a failure in words.
#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "mainwin/TaskRow.h"
#include "tests/mainwin/FrmMainFixture.h"
#include "tests/support/FailingImport.h"
#include "tests/support/SourceTree.h"
#include "ui/Handle.h"
#include "ui/MemoryContext.h"

namespace tellurvane {
namespace {

using testing::StartsWith;

constexpr std::pair<MediaType, const wchar_t*> kStation = {kInternetRadio, L"http://a.invalid/"};
constexpr const wchar_t* kLost = L"task 0，網路電台，無法連線，將再次嘗試，已啟動，";
constexpr int kMarkSize = 16;

struct MarkFile {
  char letter;
  size_t place;  // among the icons
  const char* path;
};
constexpr MarkFile kMarkFiles[] = {{'P', 4, "resources/icon105.ico"},
                                   {'T', 7, "resources/trying.ico"},
                                   {'F', 8, "resources/failed.ico"}};

class FrmMainMarkTest : public FrmMainTest {
 protected:
  // The player plays. With no icons but these marks.
  void OpenWith(std::initializer_list<std::pair<MediaType, std::wstring>> tasks) {
    milliseconds = [this] { return passed; };
    player.state = kPlayingState;
    Tasks(tasks);
    Open();
    for (const MarkFile& file : kMarkFiles) {
      auto mark = std::make_unique<ClsIcon>();
      ASSERT_TRUE(mark->LoadFromFile(SourceFile(file.path).wstring()));
      general->icons.at(file.place) = std::move(mark);
    }
  }

  void Start(int row) {
    Select(row);
    window->RunSelectedTask();
  }
  // With a tick of the timer that watches the player for each second.
  void LetPass(int seconds) {
    for (int i = 0; i < seconds; ++i) {
      passed += 1'000;
      window->Open();
    }
  }

  // A letter for the mark of each of the first rows: playing, trying or failed.
  std::string Marks() const {
    // A selected row has another ground.
    Select(-1);
    Pump();
    const int rows = static_cast<int>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
    std::string marks;
    for (int row = 0; row < std::min(rows, 3); ++row) marks += MarkOfRow(row);
    return marks;
  }
  // As a screen reader asks for it.
  std::wstring TextOf(int row) const {
    std::array<wchar_t, 512> text = {};
    LVITEMW item = {};
    item.pszText = text.data();
    item.cchTextMax = static_cast<int>(text.size());
    SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    return text.data();
  }

  std::uint64_t passed = 1'000'000;

 private:
  char MarkOfRow(int row) const {
    SendMessageW(list, LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
    UpdateWindow(list);
    RECT bounds = {LVIR_BOUNDS, 0, 0, 0};
    SendMessageW(list, LVM_GETITEMRECT, static_cast<WPARAM>(row),
                 reinterpret_cast<LPARAM>(&bounds));
    const WindowDc screen(list);
    const int top = static_cast<int>(bounds.top) + 51;
    const Color ground = PixelOf(screen.Get(), 10, top);
    const std::vector<Color> shown =
        PixelsIn(screen.Get(), {46, top, 46 + kMarkSize, top + kMarkSize});
    const RECT all = {0, 0, kMarkSize, kMarkSize};
    const UniqueBrush brush(CreateSolidBrush(ground));
    const auto picture = MemoryContext::Create(kMarkSize, kMarkSize);
    FillRect(picture->Dc(), &all, brush.Get());
    if (shown == PixelsIn(picture->Dc(), all)) return '-';
    for (const MarkFile& file : kMarkFiles) {
      FillRect(picture->Dc(), &all, brush.Get());
      general->icons.at(file.place)->Draw(picture->Dc(), 0, 0, 0);
      if (shown == PixelsIn(picture->Dc(), all)) return file.letter;
    }
    return '?';
  }
};

TEST_F(FrmMainMarkTest, IsOnTheTaskThatPlaysUntilItStops) {
  OpenWith({kStation, kStation});
  EXPECT_EQ(Marks(), "--");
  Start(1);
  EXPECT_EQ(Marks(), "-P");
  // Also if the machine's clock went back since the other one ran.
  TaskRecord& before = general->tasks[1];
  before.LastRun = before.RunStarted = SerialFromSeconds(SecondsFromSerial(Now()) + 3'600);
  Start(0);
  EXPECT_EQ(Marks(), "P-");
  Press(kStop);
  EXPECT_EQ(Marks(), "--");
  Start(0);
  general->tasks[1].MediaType = kLocalMusic;
  general->tasks[1].Source = folder.File(L"missing.mp3");
  Start(1);
  EXPECT_EQ(Marks(), "-F");
}

TEST_F(FrmMainMarkTest, ATickThatRunsATaskSelectsItsRowAndDrawsTheList) {
  OpenWith({{kReminderNote, L"n"}, kStation});
  general->tasks[1].NextRun = Now() - 2;
  EXPECT_TRUE(PumpUntil([&] { return general->tasks[1].LastRun != 0; }));
  EXPECT_EQ(SendMessageW(list, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED), 1);
  EXPECT_TRUE(IsWindowEnabled(Area()));
  EXPECT_EQ(Marks(), "-P");
}

TEST_F(FrmMainMarkTest, AStreamIsTriedPlaysIsLostAndIsTriedAgain) {
  OpenWith({kStation, {kReminderNote, L"note"}});
  player.state = kTransitioningState;
  Start(0);
  EXPECT_EQ(Marks(), "T-");
  EXPECT_THAT(TextOf(0), StartsWith(L"task 0，網路電台，正在開啟，已啟動，"));
  player.state = kPlayingState;
  LetPass(1);
  EXPECT_EQ(Marks(), "P-");
  player.state = kStoppedState;
  // Also while nobody sees it.
  window->FormMin();
  Taken();
  passed += 5'000;
  EXPECT_TRUE(PumpUntil([&] { return TextOf(0).starts_with(kLost); }));
  passed += 6'000;
  EXPECT_TRUE(PumpUntil([&] { return !player.calls.empty(); }));
  EXPECT_EQ(Taken(), (std::vector<std::wstring>{L"url http://a.invalid/", L"play"}));
  window->FormMin();
  EXPECT_EQ(Marks(), "T-");
  EXPECT_TRUE(IsOn(kStop));
  Press(kStop);
  EXPECT_THAT(TextOf(0), StartsWith(L"task 0，網路電台，已啟動，")) << "it has played";
  player.state = kReadyState;
  Start(0);
  LetPass(3);
  Press(kStop);
  EXPECT_EQ(Marks(), "F-");
  EXPECT_THAT(TextOf(0), StartsWith(L"task 0，網路電台，無法播放，已啟動，"));
  player.state = kPlayingState;
  Start(0);
  EXPECT_THAT(TextOf(0), StartsWith(L"task 0，網路電台，正在播放，已啟動，"))
      << "the run decides again";
  LetPass(1);
  player.state = kPausedState;
  LetPass(1);
  EXPECT_EQ(Marks(), "--");
  Press(kStop);
  EXPECT_EQ(Marks(), "--");
}

TEST_F(FrmMainMarkTest, ALostStreamIsTriedWhileTheEditorIsOpen) {
  OpenWith({kStation});
  player.state = kReadyState;
  Start(0);
  Edit([this](TaskList&) {
    passed += 4'000;
    Taken();
    EXPECT_TRUE(PumpUntil([&] { return TextOf(0).starts_with(kLost); }));
    passed += 6'000;
    EXPECT_TRUE(PumpUntil([&] { return !player.calls.empty(); }));
  });
  EXPECT_EQ(Taken(), (std::vector<std::wstring>{L"url http://a.invalid/", L"play"}));
}

TEST_F(FrmMainMarkTest, ALostStreamIsTriedThoughItsTaskIsRemoved) {
  for (const size_t others : {0U, 1U}) {
    others == 0 ? OpenWith({kStation}) : OpenWith({kStation, {kReminderNote, L"note"}});
    player.state = kReadyState;
    Start(0);
    LetPass(3);
    Edit([](TaskList& tasks) { tasks[0].Deleted = true; });
    ASSERT_EQ(general->tasks.size(), others);
    EXPECT_EQ(Marks(), std::string(others, '-'));
    Taken();
    LetPass(5);
    EXPECT_EQ(Taken(), (std::vector<std::wstring>{L"url http://a.invalid/", L"play"}));
    EXPECT_TRUE(IsOn(kStop));
    player.state = kPlayingState;
    LetPass(2);
    EXPECT_EQ(Marks(), std::string(others, '-'));
    Press(kStop);
    LetPass(100);
    EXPECT_EQ(Taken(), (std::vector<std::wstring>{L"close", L"stop"}));
  }
}

// The sign of trying stays.
TEST_F(FrmMainMarkTest, AScreenReaderLearnsThatAReasonHasChanged) {
  OpenWith({kStation});
  player.state = kTransitioningState;
  Start(0);
  LetPass(1);
  FailingImport reports({"NotifyWinEvent"});
  for (const int changes : {1, 0}) {
    reports.LetAllThrough();
    LetPass(31);
    EXPECT_THAT(TextOf(0), StartsWith(kLost));
    EXPECT_EQ(reports.Calls(), changes);
  }
}

TEST_F(FrmMainMarkTest, AFailureStaysUntilARunGoesWell) {
  OpenWith({{kApplication, L"no-such-program"}, {kLocalMusic, L"missing.mp3"}});
  Start(0);
  Start(1);
  EXPECT_EQ(Marks(), "FF");
  const std::wstring beginning = L"task 0，應用程式，無法啟動程式：";
  EXPECT_THAT(TextOf(0), StartsWith(beginning));
  const size_t end = TextOf(0).find(L"，已啟動，");
  EXPECT_TRUE(end != std::wstring::npos && end > beginning.size() + 3) << "the system's words";
  EXPECT_THAT(TextOf(1), StartsWith(L"task 1，本地音樂，找不到檔案，已啟動，"));
  WriteBytes(folder.File(L"found.mp3"), "any");
  general->tasks[1].Source = folder.File(L"found.mp3");
  player.state = kTransitioningState;
  player.isOpening = true;
  Start(1);
  EXPECT_EQ(Marks(), "FT");
  player.isOpening = false;
  player.state = kUndefinedState;
  EXPECT_TRUE(PumpUntil([&] { return !IsOn(kStop); })) << "no length: it could not be opened";
  EXPECT_EQ(Marks(), "FF");
  EXPECT_THAT(TextOf(1), StartsWith(L"task 1，本地音樂，無法播放，已啟動，"));
  player.duration = 100;
  player.state = kPlayingState;
  Start(1);
  LetPass(1);
  EXPECT_EQ(Marks(), "FP");
  general->tasks[0].MediaType = kReminderNote;
  Start(0);
  EXPECT_EQ(Marks(), "--");
}

TEST_F(FrmMainMarkTest, StaysWithItsTaskThroughTheEditor) {
  const struct {
    const char* what;
    std::function<void(TaskList& tasks)> edit;
    std::string marks;
  } cases[] = {
      {"nothing", [](TaskList&) {}, "FP-"},
      {"the failed one removed", [](TaskList& tasks) { tasks[0].Deleted = true; }, "P-"},
      {"the next one removed", [](TaskList& tasks) { tasks[2].Deleted = true; }, "FP"},
      {"the playing one removed", [](TaskList& tasks) { tasks[1].Deleted = true; }, "F-"},
      {"all removed, new ones by their names",
       [](TaskList& tasks) {
         const TaskList before = tasks;
         for (TaskRecord& task : tasks) task.Deleted = true;
         tasks.insert(tasks.end(), before.begin(), before.end());
       },
       "---"},
      {"the names given to others",
       [](TaskList& tasks) {
         tasks[1].Name = L"other";
         tasks[0].Name = L"task 1";
         tasks[2].Name = L"task 0";
       },
       "FP-"},
  };
  for (const auto& [what, edit, marks] : cases) {
    OpenWith({{kLocalMusic, L"missing.mp3"}, kStation, kStation});
    Start(0);
    Start(1);
    Edit(edit);
    EXPECT_EQ(Marks(), marks) << what;
  }
}

}  // namespace
}  // namespace tellurvane
