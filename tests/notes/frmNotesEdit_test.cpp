#include "notes/frmNotesEdit.h"

#include <gmock/gmock.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/DialogTestSupport.h"
#include "tests/support/FormProbe.h"
#include "tests/support/WindowTestSupport.h"
#include "ui/Handle.h"
#include "ui/Timer.h"

namespace tellurvane {
namespace {

// The editor as a user sees it while it is open.
class OpenEditor {
 public:
  explicit OpenEditor(HWND window) : window_(window) {}

  HWND Window() const { return window_; }
  HWND Box() const { return InsideOf(window_, L"RichEdit20W").at(0); }
  HWND Button(const std::wstring& text) const { return WithText(L"Button", text); }
  std::vector<std::wstring> Labels() const {
    std::vector<std::wstring> texts;
    for (const HWND label : InsideOf(window_, L"Static")) texts.push_back(WindowText(label));
    return texts;
  }
  // The colour in which the label of that text is written.
  Color ColorOf(const std::wstring& text) const {
    const HWND label = WithText(L"Static", text);
    const UniqueMemoryDc context(CreateCompatibleDC(nullptr));
    SendMessageW(GetParent(label), WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(context.Get()),
                 reinterpret_cast<LPARAM>(label));
    return GetTextColor(context.Get());
  }
  std::wstring Text() const { return WindowText(Box()); }
  // As typing over everything does.
  void Write(const std::wstring& text) const {
    SendMessageW(Box(), EM_SETSEL, 0, -1);
    SendMessageW(Box(), EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text.c_str()));
  }
  void Press(const std::wstring& button) const { SendMessageW(Button(button), BM_CLICK, 0, 0); }
  void Key(UINT key) const { PostMessageW(Box(), WM_KEYDOWN, key, 1); }

 private:
  HWND WithText(const wchar_t* windowClass, const std::wstring& text) const {
    for (const HWND child : InsideOf(window_, windowClass)) {
      if (WindowText(child) == text) return child;
    }
    ADD_FAILURE() << "none";
    return nullptr;
  }

  HWND window_;
};

class frmNotesEditTest : public testing::Test {
 protected:
  // Opens the editor on a stored text and lets somebody use it. Returns what was written.
  std::optional<std::wstring> Edit(const std::wstring& source,
                                   const std::function<void(const OpenEditor&)>& use) {
    std::optional<std::wstring> written;
    frmNotesEdit editor(source, [&](const std::wstring& text) { written = text; });
    Timer user;
    user.Interval(10);
    user.Tick = [&] {
      if (!editor.Visible()) return;
      user.Enabled(false);
      use(OpenEditor(editor.hwnd()));
    };
    Timer guard;
    guard.Interval(10'000);
    guard.Tick = [&] {
      ADD_FAILURE() << "the editor did not close";
      editor.Unload();
    };
    user.Enabled(true);
    guard.Enabled(true);
    editor.Open(owner.hwnd());
    EXPECT_FALSE(editor.IsLoaded());
    EXPECT_TRUE(owner.Enabled());
    return written;
  }

  TestForm owner;
};

const std::wstring kHint = L"撰寫時請勿超過 8 行，每行限制字數為 21 字";

TEST_F(frmNotesEditTest, HoldsTheHintTheTextAndTwoButtons) {
  Edit(L"a\\r\\nb", [this](const OpenEditor& editor) {
    EXPECT_THAT(editor.Labels(), testing::Contains(kHint));
    EXPECT_EQ(editor.Text(), L"a\r\nb");
    EXPECT_NE(editor.Button(L"確 定"), nullptr);
    EXPECT_EQ(GetFocus(), editor.Box());
    EXPECT_FALSE(owner.Enabled());
    editor.Press(L"關 閉");
  });
}

TEST_F(frmNotesEditTest, NothingInItIsCutOffOrCoversAnother) {
  Edit(L"a", [](const OpenEditor& editor) {
    ExpectBoxesApart(editor.Window(), 5);
    editor.Press(L"關 閉");
  });
}

TEST_F(frmNotesEditTest, OkWritesTheTextAsItIsStored) {
  struct Row {
    std::wstring typed;
    std::wstring stored;
  };
  for (const Row& row : {Row{L"a\r\nb", L"a\\r\\nb"}, Row{L"喝水", L"喝水"},
                         Row{L"一\r\n\r\n三\r\n", L"一\\r\\n\\r\\n三\\r\\n"}}) {
    EXPECT_EQ(Edit(L"before",
                   [&](const OpenEditor& editor) {
                     editor.Write(row.typed);
                     editor.Press(L"確 定");
                   }),
              row.stored);
  }
}

TEST_F(frmNotesEditTest, OkWithAnEmptyBoxKeepsWhatWasThere) {
  EXPECT_EQ(Edit(L"before",
                 [](const OpenEditor& editor) {
                   editor.Write(L"");
                   EXPECT_EQ(editor.Text(), L"");
                   editor.Press(L"確 定");
                 }),
            std::nullopt);
}

TEST_F(frmNotesEditTest, ConfirmedWithoutAChangeTheTextStaysByteForByte) {
  for (const std::wstring& stored :
       {std::wstring(L"a\\r\\nb"), std::wstring(L"a"), std::wstring(L"\\r\\n\\r\\n"),
        std::wstring(L"C:\\\\r\\n\\"), std::wstring(L"a\rb\nc"), std::wstring(L"一\tb"),
        std::wstring(L"\xD83D\xDE00 \\n\\r"), std::wstring(5'000, L'字')}) {
    const auto written = Edit(stored, [](const OpenEditor& editor) { editor.Press(L"確 定"); });
    EXPECT_EQ(written.value_or(stored), stored);
  }
}

TEST_F(frmNotesEditTest, ClosingWritesNothing) {
  const std::function<void(const OpenEditor&)> ways[] = {
      [](const OpenEditor& editor) { editor.Press(L"關 閉"); },
      [](const OpenEditor& editor) { editor.Key(VK_ESCAPE); },
      [](const OpenEditor& editor) { PostMessageW(editor.Window(), WM_CLOSE, 0, 0); }};
  for (const auto& close : ways) {
    EXPECT_EQ(Edit(L"before",
                   [&](const OpenEditor& editor) {
                     editor.Write(L"after");
                     close(editor);
                   }),
              std::nullopt);
  }
}

TEST_F(frmNotesEditTest, ControlEnterConfirmsAndEnterAloneMakesALine) {
  EXPECT_EQ(Edit(L"before",
                 [](const OpenEditor& editor) {
                   editor.Write(L"a");
                   SendMessageW(editor.Box(), WM_KEYDOWN, VK_RETURN, 1);
                   SendMessageW(editor.Box(), WM_CHAR, VK_RETURN, 1);
                   SendMessageW(editor.Box(), WM_CHAR, 'b', 1);
                   EXPECT_EQ(editor.Text(), L"a\r\nb");
                   BYTE keys[256] = {};
                   GetKeyboardState(keys);
                   BYTE held[256] = {};
                   held[VK_CONTROL] = 0x80;
                   SetKeyboardState(held);
                   SendMessageW(editor.Box(), WM_KEYDOWN, VK_RETURN, 1);
                   SetKeyboardState(keys);
                 }),
            L"a\\r\\nb");
}

TEST_F(frmNotesEditTest, CountsLinesAndCharactersAndWarnsPastTheLimits) {
  struct Row {
    std::wstring text;
    std::wstring count;
    bool isTooMuch;
  };
  std::wstring eightLines(L"a");
  for (int i = 1; i < 8; ++i) eightLines += L"\r\na";
  for (const Row& row :
       {Row{L"a\r\nbcd", L"2 行，最長 3 字", false},
        Row{std::wstring(21, L'字'), L"1 行，最長 21 字", false},
        Row{std::wstring(22, L'字'), L"1 行，最長 22 字", true},
        Row{eightLines, L"8 行，最長 1 字", false},
        Row{eightLines + L"\r\n", L"9 行，最長 1 字", true}, Row{L"", L"0 行，最長 0 字", false}}) {
    Edit(L"before", [&](const OpenEditor& editor) {
      const Color calm = editor.ColorOf(L"1 行，最長 6 字");
      editor.Write(row.text);
      ASSERT_THAT(editor.Labels(), testing::Contains(row.count));
      const Color now = editor.ColorOf(row.count);
      EXPECT_EQ(now != calm, row.isTooMuch);
      EXPECT_EQ((now & 0xFF) > 2 * ((now >> 16) & 0xFF), row.isTooMuch) << "red";
      editor.Press(L"關 閉");
    });
  }
}

TEST_F(frmNotesEditTest, TheLimitsAreOnlyAdvice) {
  std::wstring tooMuch(30, L'字');
  std::wstring stored = tooMuch;
  for (int i = 0; i < 10; ++i) {
    tooMuch += L"\r\n行";
    stored += L"\\r\\n行";
  }
  EXPECT_EQ(Edit(L"before",
                 [&](const OpenEditor& editor) {
                   editor.Write(tooMuch);
                   editor.Press(L"確 定");
                 }),
            stored);
}

TEST_F(frmNotesEditTest, LeavesNothingBehind) {
  EXPECT_EQ(LeakedBy([this] {
              Edit(L"a\\r\\nb", [](const OpenEditor& editor) {
                editor.Write(L"c");
                editor.Press(L"確 定");
              });
            }),
            ResourceCounts());
}

}  // namespace
}  // namespace tellurvane
