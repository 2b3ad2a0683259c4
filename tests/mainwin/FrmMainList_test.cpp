// The main window's list after an edit, and while its file is locked.
#include <functional>
#include <string>

#include "tests/mainwin/FrmMainFixture.h"
#include "ui/Handle.h"

namespace tellurvane {
namespace {

class FrmMainListTest : public FrmMainTest {
 protected:
  int SelectedRow() const {
    return static_cast<int>(
        SendMessageW(list, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
  }
  int Rows() const { return static_cast<int>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0)); }

  std::wstring ListPath() const { return folder.File(L"JobList.dbs"); }
  // Like a program that locks the file.
  void Lock() {
    locked = OwnedFile(
        CreateFileW(ListPath().c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(locked);
  }
  size_t Backups() const {
    size_t backups = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
      if (entry.path().extension() == L".bak") ++backups;
    }
    return backups;
  }
  // Pixels of the list that are not its background.
  ptrdiff_t Ink() const {
    Pump();
    RECT header = {};
    GetClientRect(reinterpret_cast<HWND>(SendMessageW(list, LVM_GETHEADER, 0, 0)), &header);
    RECT client = {};
    GetClientRect(list, &client);
    const WindowDc screen(list);
    client.top = header.bottom;
    return std::ranges::count_if(PixelsIn(screen.Get(), client),
                                 [](Color color) { return color != GetSysColor(COLOR_WINDOW); });
  }

  UniqueKernelHandle locked;
};

TEST_F(FrmMainListTest, TheSelectionStaysWithItsTask) {
  const auto remove = [](std::initializer_list<size_t> rows) {
    return [rows = std::vector<size_t>(rows)](TaskList& tasks) {
      for (const size_t row : rows) tasks[row].Deleted = true;
    };
  };
  const struct {
    const char* what;
    std::function<void(TaskList& tasks)> change;
    int row;  // of the task that was on row 2
  } cases[] = {
      {"nothing", [](TaskList&) {}, 2},
      {"the first removed", remove({0}), 1},
      {"the two previous ones removed", remove({0, 1}), 0},
      {"the next one removed", remove({3}), 2},
      {"removed itself", remove({2}), -1},
      {"removed with the first one", remove({0, 2}), -1},
      {"all removed", remove({0, 1, 2, 3}), -1},
      {"a new one", [](TaskList& tasks) { tasks.push_back(tasks[0]); }, 2},
  };
  for (const auto& [what, change, row] : cases) {
    Tasks({{kReminderNote, L"a"},
           {kReminderNote, L"b"},
           {kReminderNote, L"c"},
           {kReminderNote, L"d"}});
    Open();
    Select(2);
    Edit(change);
    EXPECT_EQ(SelectedRow(), row) << what;
  }
}

// The message loop must not take the letter for a control.
TEST_F(FrmMainListTest, ATypedLetterSelectsTheNextTaskThatBeginsWithIt) {
  Tasks({{kReminderNote, L"a"}, {kReminderNote, L"b"}, {kReminderNote, L"c"}});
  Open();
  general->tasks[1].Name = L"other";
  Select(0);
  SetFocus(list);
  PostMessageW(list, WM_CHAR, L'T', 1);
  Pump();
  EXPECT_EQ(SelectedRow(), 2);
}

TEST_F(FrmMainListTest, IsLoadedIntoTheHiddenWindowOnceTheFileCanBeOpened) {
  Tasks({{kReminderNote, L"a"}, {kReminderNote, L"b"}});
  const std::string bytes = ReadBytes(ListPath());
  Lock();
  Open();
  EXPECT_EQ(Rows(), 0);
  window->FormMin();
  locked.Reset();
  // A save at the end of the session writes nothing.
  SendMessageW(window->hwnd(), WM_ENDSESSION, TRUE, 0);
  EXPECT_EQ(ReadBytes(ListPath()), bytes);
  EXPECT_TRUE(PumpUntil([&] { return Rows() == 2; }));
  EXPECT_EQ(general->tasks.size(), 2U);
  EXPECT_FALSE(window->Visible());
  EXPECT_EQ(Backups(), 0U);
}

TEST_F(FrmMainListTest, AnEmptyListSaysWhyOnlyWhileItsFileIsLocked) {
  Tasks({{kReminderNote, L"a"}});
  Lock();
  Open();
  SetFocus(toolbar);
  EXPECT_GT(Ink(), 100);
  locked.Reset();
  WriteBytes(ListPath(), "");
  EXPECT_TRUE(PumpUntil([&] { return Ink() == 0; }));
  EXPECT_EQ(Rows(), 0);
}

TEST_F(FrmMainListTest, TheEditorFirstLoadsAListThatWasLocked) {
  Tasks({{kReminderNote, L"a"}});
  Lock();
  Open();
  locked.Reset();
  Edit([](TaskList& tasks) {
    ASSERT_EQ(tasks.size(), 1U);
    tasks.push_back(tasks.at(0));
    tasks[1].Name = L"new";
  });
  EXPECT_EQ(Rows(), 2);
  EXPECT_EQ(Backups(), 0U);
}

TEST_F(FrmMainListTest, IsSavedBeforeTheEditorOpens) {
  Tasks({{kReminderNote, L"a"}});
  Open();
  DeleteFileW(ListPath().c_str());
  ActingForm user;
  user.ActLater([&] {
    EXPECT_GT(ReadBytes(ListPath()).size(), 2U);
    EndDialogWindow(GetLastActivePopup(window->hwnd()));
  });
  Press(kNew);
  EXPECT_EQ(Rows(), 1);
}

TEST_F(FrmMainListTest, IsNotLoadedWhileTheEditorIsOpen) {
  Tasks({{kReminderNote, L"a"}});
  Lock();
  Open();
  ActingForm user;
  user.ActLater([&] {
    locked.Reset();
    window->RetryUnreadList();
    EXPECT_TRUE(general->tasks.empty());
    EndDialogWindow(GetLastActivePopup(window->hwnd()));
  });
  Press(kNew);
  EXPECT_TRUE(PumpUntil([&] { return Rows() == 1; })) << "but after it";
}

// Music that ends meanwhile runs a task, which enables the task timer and posts a tick.
TEST_F(FrmMainListTest, ATaskThatFallsDueWhileTheEditorIsOpenIsMovedOnAndNotRun) {
  Tasks({{kLocalMusic, folder.File(L"Setting.ini")}, {kApplication, L"no such program"}});
  Open();
  general->settings.SongLoop = 1;
  player.duration = 10;
  Select(0);
  window->RunSelectedTask();
  Taken();
  Edit([this](TaskList& tasks) {
    // Longer than a second after the last tick.
    milliseconds = [] { return GetTickCount64() + 2'000; };
    tasks[1].NextRun = Now() - 2;
    player.hasEnded = true;
    EXPECT_TRUE(PumpUntil([&] { return std::ranges::count(player.calls, L"play") > 0; }));
    const int reads = player.positionReads;
    EXPECT_TRUE(PumpUntil([&] { return player.positionReads > reads + 12; })) << "over a second";
    EXPECT_EQ(tasks[1].LastRun, 0);
  });
  EXPECT_EQ(general->tasks[1].LastRun, 0);
  EXPECT_GT(general->tasks[1].NextRun, Now());
}

TEST_F(FrmMainListTest, ASavedTaskReplacesALockedList) {
  Tasks({{kReminderNote, L"a"}});
  const std::string bytes = ReadBytes(ListPath());
  Lock();
  Open();
  Edit([](TaskList& tasks) {
    tasks.emplace_back().Name = L"new";
    tasks[0].NextRun = Now() + 1;
  });
  EXPECT_EQ(Rows(), 1);
  locked.Reset();
  window->RetryUnreadList();
  ASSERT_EQ(general->tasks.size(), 1U);
  EXPECT_EQ(general->tasks[0].Name, L"new") << "the file is not loaded over it";
  EXPECT_EQ(ReadBytes(ListPath()), bytes);
  Press(kLeave);
  EXPECT_TRUE(PumpUntil([&] { return !window->IsLoaded(); }));
  EXPECT_EQ(Backups(), 1U);
  EXPECT_NE(ReadBytes(ListPath()), bytes);
}

}  // namespace
}  // namespace tellurvane
