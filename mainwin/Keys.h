// The keys of the main window.
#pragma once

namespace tellurvane {

enum class KeyCommand {
  kNone,
  kNewTask,
  kRunTask,
  kEditTask,
  kSwitchTask,
  kStopPlayback,
  kShowOptions,
  kLeave,
  kNextWindow,
};

struct KeyPress {
  unsigned key = 0;  // a virtual key code of the platform
  bool isShift = false;
  bool isControl = false;
  bool isAlt = false;
  bool isInList = false;  // the task list has the keyboard
};

KeyCommand CommandOf(const KeyPress& press);

}  // namespace tellurvane
