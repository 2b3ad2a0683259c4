// A process in which nothing has been done before.
#pragma once

namespace tellurvane {

// Runs the test that calls it once more, alone in a process of its own: what the program keeps from
// the first time on, it does not have there. True in that process; false in the one that has
// started it, after it has ended, and has failed the test where the other one failed.
//
//   TEST(Suite, Name) {
//     if (!InFreshProcess()) return;
//     ...
bool InFreshProcess();

}  // namespace tellurvane
