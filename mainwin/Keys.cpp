#include "mainwin/Keys.h"

#include <algorithm>
#include <iterator>

namespace tellurvane {
namespace {

// Virtual key codes. Portable code does not include the platform's headers.
constexpr unsigned kReturn = 0x0D;
constexpr unsigned kSpace = 0x20;
constexpr unsigned kInsert = 0x2D;
constexpr unsigned kQ = 'Q';
constexpr unsigned kS = 'S';
constexpr unsigned kF2 = 0x71;
constexpr unsigned kF6 = 0x75;
constexpr unsigned kF10 = 0x79;
constexpr unsigned kMediaStop = 0xB2;

struct Binding {
  unsigned key;
  bool isControl;
  bool isOnlyInList;
  KeyCommand command;
};

constexpr Binding kBindings[] = {
    {kInsert, false, false, KeyCommand::kNewTask},
    // Elsewhere these two press buttons.
    {kReturn, false, true, KeyCommand::kRunTask},
    {kSpace, false, true, KeyCommand::kSwitchTask},
    {kF2, false, false, KeyCommand::kEditTask},
    {kS, true, false, KeyCommand::kStopPlayback},
    {kMediaStop, false, false, KeyCommand::kStopPlayback},
    {kF10, false, false, KeyCommand::kShowOptions},
    {kQ, true, false, KeyCommand::kLeave},
    {kF6, false, false, KeyCommand::kNextWindow},
};

}  // namespace

KeyCommand CommandOf(const KeyPress& press) {
  const auto matches = [&](const Binding& binding) {
    return binding.key == press.key && binding.isControl == press.isControl &&
           (press.isInList || !binding.isOnlyInList);
  };
  if (press.isShift || press.isAlt) return KeyCommand::kNone;
  const auto* const found = std::ranges::find_if(kBindings, matches);
  return found == std::end(kBindings) ? KeyCommand::kNone : found->command;
}

}  // namespace tellurvane
