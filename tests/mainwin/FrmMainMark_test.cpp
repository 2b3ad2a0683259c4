// The marks of the rows, and the reason of a failure in words.
#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "mainwin/TaskRow.h"
#include "tests/mainwin/FrmMainFixture.h"
#include "tests/support/FailingImport.h"
#include "ui/Handle.h"
#include "ui/MemoryContext.h"

namespace tellurvane {
namespace {

constexpr std::pair<MediaType, const wchar_t*> kStation = {kInternetRadio, L"http://a.invalid/"};
constexpr int kMarkSize = 16;

struct MarkFile {
  char letter;
  size_t place;  // among the icons
  const wchar_t* name;
};
constexpr MarkFile kMarkFiles[] = {
    {'P', 4, L"icon105.ico"}, {'T', 7, L"trying.ico"}, {'F', 8, L"failed.ico"}};

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
      ASSERT_TRUE(
          mark->LoadFromFile(L"" TELLURVANE_SOURCE_DIR "/resources/" + std::wstring(file.name)));
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
  // The name and the reason of a failure in the text that a screen reader asks for.
  std::wstring TextOf(int row) const {
    std::array<wchar_t, 512> text = {};
    LVITEMW item = {};
    item.pszText = text.data();
    item.cchTextMax = static_cast<int>(text.size());
    SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    std::wstring shown = text.data();
    shown.resize(std::min(shown.find(L"，已"), shown.size()));
    for (const std::wstring part : {L"，網路電台", L"，本地音樂", L"，應用程式", L"，記事提醒",
                                    L"，正在播放", L"，正在開啟"}) {
      if (const size_t at = shown.find(part); at != shown.npos) shown.erase(at, part.size());
    }
    return shown;
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

TEST_F(FrmMainMarkTest, AStreamIsTriedPlaysIsLostAndIsTriedAgain) {
  OpenWith({kStation, {kReminderNote, L"note"}});
  player.state = kTransitioningState;
  Start(0);
  EXPECT_EQ(Marks(), "T-");
  EXPECT_EQ(TextOf(0), L"task 0");
  player.state = kPlayingState;
  LetPass(1);
  EXPECT_EQ(Marks(), "P-");
  player.state = kStoppedState;
  // Also while nobody sees it.
  window->FormMin();
  Taken();
  passed += 5'000;
  EXPECT_TRUE(PumpUntil([&] { return TextOf(0) == L"task 0，無法連線，將再次嘗試"; }));
  passed += 6'000;
  EXPECT_TRUE(PumpUntil([&] { return !player.calls.empty(); }));
  EXPECT_EQ(Taken(), (std::vector<std::wstring>{L"url http://a.invalid/", L"play"}));
  window->FormMin();
  EXPECT_EQ(Marks(), "T-");
  EXPECT_TRUE(IsOn(kStop));
  Press(kStop);
  EXPECT_EQ(TextOf(0), L"task 0") << "it has played";
  player.state = kReadyState;
  Start(0);
  LetPass(3);
  Press(kStop);
  EXPECT_EQ(Marks(), "F-");
  EXPECT_EQ(TextOf(0), L"task 0，無法播放");
  player.state = kPlayingState;
  Start(0);
  EXPECT_EQ(TextOf(0), L"task 0") << "the run decides again";
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
    EXPECT_TRUE(PumpUntil([&] { return TextOf(0) != L"task 0"; }));
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

TEST_F(FrmMainMarkTest, AScreenReaderLearnsThatAReasonHasChanged) {
  OpenWith({{kApplication, L"no-such-program"}});
  FailingImport reports({"NotifyWinEvent"});
  for (const int changes : {1, 0}) {
    reports.LetAllThrough();
    Start(0);
    EXPECT_EQ(reports.Calls(), changes);
  }
}

TEST_F(FrmMainMarkTest, AFailureStaysUntilARunGoesWell) {
  OpenWith({{kApplication, L"no-such-program"}, {kLocalMusic, L"missing.mp3"}});
  Start(0);
  Start(1);
  EXPECT_EQ(Marks(), "FF");
  const std::wstring beginning = L"task 0，無法啟動程式：";
  EXPECT_EQ(TextOf(0).substr(0, beginning.size()), beginning);
  EXPECT_GT(TextOf(0).size(), beginning.size() + 3) << "the system's words";
  EXPECT_EQ(TextOf(1), L"task 1，找不到檔案");
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
  EXPECT_EQ(TextOf(1), L"task 1，無法播放");
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
