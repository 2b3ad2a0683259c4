#include "tests/support/MenuTestSupport.h"

#include <windows.h>

#include <gtest/gtest.h>

#include "ui/Timer.h"

namespace tellurvane {

void InOpenMenu(const std::function<void()>& open, const std::function<void()>& act) {
  Timer user;
  user.Interval(20);
  user.Tick = [&] {
    if (!IsWindowVisible(FindWindowW(L"#32768", nullptr))) return;
    user.Enabled(false);
    act();
  };
  Timer limit;
  limit.Interval(8'000);
  limit.Tick = [&] {
    ADD_FAILURE() << "the menu stayed open";
    EndMenu();
  };
  user.Enabled(true);
  limit.Enabled(true);
  open();
  EXPECT_FALSE(user.Enabled()) << "no menu was opened";
}

void ChooseInMenu(const std::function<void()>& open, HWND owner, int entry) {
  InOpenMenu(open, [&] {
    for (int i = 0; i < entry; ++i) PostMessageW(owner, WM_KEYDOWN, VK_DOWN, 0);
    PostMessageW(owner, WM_KEYDOWN, VK_RETURN, 0);
  });
}

}  // namespace tellurvane
