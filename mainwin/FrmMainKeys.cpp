// The keyboard in the main window, and on its way through the notes and the clock.
#include <algorithm>
#include <utility>
#include <vector>

#include "mainwin/FrmMain.h"
#include "mainwin/Keys.h"

namespace tellurvane {

// The order in which the Tab key goes through them, and then round.
void FrmMain::OrderTabStops() {
  for (const PictureBox* const box : {&picSliderH_, &picSliderVolH_, &PicListView_, &picToolbar_}) {
    SetWindowPos(box->hwnd(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  }
}

bool FrmMain::Form_KeyDown(const KeyEvent& event) {
  // The hidden window has the keyboard after the tray menu.
  if (!IsOnScreen()) return false;
  const KeyCommand command = CommandOf({.key = event.key,
                                        .isShift = (event.shift & kShiftKey) != 0,
                                        .isControl = (event.shift & kControlKey) != 0,
                                        .isAlt = (event.shift & kAltKey) != 0,
                                        .isInList = rows_.HasFocus()});
  // The key may be meant for another player.
  if (command == KeyCommand::kStopPlayback && !playback_.IsStarted()) return false;
  if (command == KeyCommand::kNone) return false;
  // A key that is held down acts once.
  if (!event.isRepeated) Obey(command);
  return true;
}

void FrmMain::Obey(KeyCommand command) {
  switch (command) {
    case KeyCommand::kNewTask:
      OpenEditor({});
      break;
    case KeyCommand::kRunTask:
      runner_.RunNow(rows_.TakeRow());
      break;
    case KeyCommand::kEditTask:
      if (const auto row = rows_.TakeRow()) OpenEditor(row);
      break;
    case KeyCommand::kSwitchTask:
      runner_.SwitchEnabled(rows_.TakeRow());
      break;
    case KeyCommand::kStopPlayback:
      playback_.StopPlayback();
      break;
    case KeyCommand::kShowOptions:
      OptionsMenuClick(OptionsPlace());
      break;
    case KeyCommand::kLeave:
      Leave();
      break;
    case KeyCommand::kNextWindow:
      GoToNextWindow();
      break;
    case KeyCommand::kNone:
      break;
  }
}

bool FrmMain::StopByMediaKey(LPARAM command) {
  const bool isStop = GET_APPCOMMAND_LPARAM(command) == APPCOMMAND_MEDIA_STOP;
  if (!isStop || !playback_.IsStarted()) return false;
  playback_.StopPlayback();
  return true;
}

POINT FrmMain::OptionsPlace() const {
  const RECT button = ToolBar_.ButtonPlace(kOptionsButton);
  return {button.left, button.bottom};
}

// A disabled slider would keep the keyboard away from all other controls.
void FrmMain::EnablePosition(bool enable) {
  const bool hasFocus = GetFocus() == picSliderH_.hwnd();
  SliderH_.Enabled(enable);
  if (hasFocus && !enable) rows_.TakeFocus();
}

std::vector<HWND> FrmMain::PassedWindows() const {
  std::vector<HWND> windows = notes_.Windows();
  if (clock_.Visible()) windows.push_back(clock_.hwnd());
  return windows;
}

// The notes, the clock, and back to the window.
void FrmMain::GoToNextWindow() {
  std::vector<HWND> stops = PassedWindows();
  if (const HWND front = FrontWindow(); front != hwnd() || IsOnScreen()) stops.push_back(front);
  if (stops.empty()) return;
  RememberKeyboard();
  const auto now = std::ranges::find(stops, GetForegroundWindow());
  const bool isLast = now == stops.end() || std::next(now) == stops.end();
  SetForegroundWindow(isLast ? stops.front() : *std::next(now));
}

bool FrmMain::IsPassed(HWND window) const {
  const std::vector<HWND> passed = PassedWindows();
  return std::ranges::find(passed, window) != passed.end();
}

void FrmMain::RememberKeyboard() {
  const HWND now = GetForegroundWindow();
  if (!IsPassed(now)) keyboardBefore_ = now;
}

// The user may be in another program by now.
void FrmMain::GiveKeyboardBack() {
  if (!IsPassed(GetForegroundWindow())) return;
  const HWND before = std::exchange(keyboardBefore_, nullptr);
  const bool canTakeIt = IsWindowVisible(before) && IsWindowEnabled(before) && !IsIconic(before);
  if (canTakeIt) {
    SetForegroundWindow(before);
  } else if (IsOnScreen()) {
    SetForegroundWindow(FrontWindow());
  }
}

NoteKeyboard FrmMain::MakeNoteKeyboard() {
  return {.isTaken = [this] { RememberKeyboard(); },
          .isFree = [this] { GiveKeyboardBack(); },
          .next = [this] { GoToNextWindow(); }};
}

}  // namespace tellurvane
