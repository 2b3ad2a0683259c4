#include "mainwin/Keys.h"

#include <gtest/gtest.h>

namespace tellurvane {
namespace {

constexpr unsigned kReturn = 0x0D;
constexpr unsigned kEscape = 0x1B;
constexpr unsigned kSpace = 0x20;
constexpr unsigned kInsert = 0x2D;
constexpr unsigned kDelete = 0x2E;
constexpr unsigned kF2 = 0x71;
constexpr unsigned kF6 = 0x75;
constexpr unsigned kF10 = 0x79;
constexpr unsigned kMediaStop = 0xB2;

TEST(Keys, EachKeyHasItsCommandInTheListAndElsewhere) {
  const struct {
    const char* name;
    unsigned key;
    bool isControl;
    KeyCommand inList;
    KeyCommand elsewhere;
  } rows[] = {
      {"Insert", kInsert, false, KeyCommand::kNewTask, KeyCommand::kNewTask},
      {"Enter", kReturn, false, KeyCommand::kRunTask, KeyCommand::kNone},
      {"F2", kF2, false, KeyCommand::kEditTask, KeyCommand::kEditTask},
      {"Space", kSpace, false, KeyCommand::kSwitchTask, KeyCommand::kNone},
      {"Ctrl+S", 'S', true, KeyCommand::kStopPlayback, KeyCommand::kStopPlayback},
      {"media stop", kMediaStop, false, KeyCommand::kStopPlayback, KeyCommand::kStopPlayback},
      {"F10", kF10, false, KeyCommand::kShowOptions, KeyCommand::kShowOptions},
      {"Ctrl+Q", 'Q', true, KeyCommand::kLeave, KeyCommand::kLeave},
      {"F6", kF6, false, KeyCommand::kNextWindow, KeyCommand::kNextWindow},
      {"S", 'S', false, KeyCommand::kNone, KeyCommand::kNone},
      {"Q", 'Q', false, KeyCommand::kNone, KeyCommand::kNone},
      {"Ctrl+Insert", kInsert, true, KeyCommand::kNone, KeyCommand::kNone},
      {"Ctrl+Enter", kReturn, true, KeyCommand::kNone, KeyCommand::kNone},
      {"Ctrl+Space", kSpace, true, KeyCommand::kNone, KeyCommand::kNone},
      {"Delete", kDelete, false, KeyCommand::kNone, KeyCommand::kNone},
      {"Esc", kEscape, false, KeyCommand::kNone, KeyCommand::kNone},
  };
  for (const auto& [name, key, isControl, inList, elsewhere] : rows) {
    KeyPress press = {.key = key, .isControl = isControl, .isInList = true};
    EXPECT_EQ(CommandOf(press), inList) << name;
    press.isInList = false;
    EXPECT_EQ(CommandOf(press), elsewhere) << name;
    // Shift+F10 opens the row's menu, and Alt with a key belongs to the system.
    press.isShift = true;
    EXPECT_EQ(CommandOf(press), KeyCommand::kNone) << "Shift with " << name;
    press.isShift = false;
    press.isAlt = true;
    EXPECT_EQ(CommandOf(press), KeyCommand::kNone) << "Alt with " << name;
  }
}

}  // namespace
}  // namespace tellurvane
