// What the user pastes into a rich edit box.
#include <windows.h>

#include <gtest/gtest.h>
#include <richedit.h>

#include "ClipboardSupport.h"
#include "ControlTestSupport.h"

namespace tellurvane {
namespace {

TEST(clsControlPastingTest, RichEditBoxesHoldPlainTextOnly) {
  const struct {
    int multilin;
    int held;
    WPARAM key;
  } rows[] = {{0, VK_CONTROL, 'V'}, {1, VK_CONTROL, 'V'}, {1, VK_SHIFT, VK_INSERT}};
  for (const auto& row : rows) {
    HostedControl hosted(ControlKind::kRichEditBox, row.multilin);
    EXPECT_EQ(hosted.Send(EM_GETTEXTMODE) & TM_PLAINTEXT, TM_PLAINTEXT);
    ASSERT_TRUE(PutRtfOnClipboard(hosted.form.hwnd()));
    hosted.control.text(L"typed !");
    hosted.Send(EM_SETSEL, 6, 6);
    {
      const HeldKeys keys({row.held});
      hosted.Send(WM_KEYDOWN, row.key, 1);
    }
    EXPECT_EQ(hosted.control.text(), L"typed pasted!") << row.key;
    for (const int place : {0, 8}) {
      hosted.Send(EM_SETSEL, static_cast<WPARAM>(place), place + 1);
      CHARFORMATW format = {};
      format.cbSize = sizeof(format);
      hosted.Send(EM_GETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format));
      EXPECT_EQ(format.yHeight, 9 * 20) << place;
      EXPECT_STREQ(format.szFaceName, L"Tahoma") << place;
    }
  }
}

TEST(clsControlPastingTest, NothingIsPastedIntoALockedRichEditBox) {
  HostedControl hosted(ControlKind::kRichEditBox, 1);
  ASSERT_TRUE(PutRtfOnClipboard(hosted.form.hwnd()));
  hosted.control.text(L"kept");
  hosted.Send(EM_SETREADONLY, TRUE);
  const HeldKeys keys({VK_CONTROL});
  hosted.Send(WM_KEYDOWN, 'V', 1);
  EXPECT_EQ(hosted.control.text(), L"kept");
}

TEST(clsControlPastingTest, WhatIsSelectedIsReplaced) {
  HostedControl hosted(ControlKind::kRichEditBox, 1);
  ASSERT_TRUE(PutRtfOnClipboard(hosted.form.hwnd()));
  hosted.control.text(L"a b c");
  hosted.Send(EM_SETSEL, 2, 3);
  const HeldKeys keys({VK_CONTROL});
  hosted.Send(WM_KEYDOWN, 'V', 1);
  EXPECT_EQ(hosted.control.text(), L"a pasted c");
}

TEST(clsControlPastingTest, WhatTheBoxMayNotHoldIsCut) {
  const struct {
    int limit;
    const wchar_t* text;
  } rows[] = {{7, L"a pastc"}, {10, L"a pastedc"}, {5, L"a pac"}, {3, L"a b c"}};
  for (const auto& row : rows) {
    HostedControl hosted(ControlKind::kRichEditBox, 1);
    ASSERT_TRUE(PutRtfOnClipboard(hosted.form.hwnd()));
    hosted.control.text(L"a b c");
    hosted.Send(EM_EXLIMITTEXT, 0, row.limit);
    hosted.Send(EM_SETSEL, 2, 4);
    const HeldKeys keys({VK_CONTROL});
    hosted.Send(WM_KEYDOWN, 'V', 1);
    EXPECT_EQ(hosted.control.text(), row.text) << row.limit;
  }
}

TEST(clsControlPastingTest, TheLetterAloneIsNoPasting) {
  HostedControl hosted(ControlKind::kRichEditBox, 1);
  ASSERT_TRUE(PutRtfOnClipboard(hosted.form.hwnd()));
  hosted.Send(WM_KEYDOWN, 'V', 1);
  EXPECT_EQ(hosted.control.text(), L"");
}

}  // namespace
}  // namespace tellurvane
