#include "notes/frmNotesEdit.h"

#include <gmock/gmock.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/CodePage.h"
#include "tests/support/ActingForm.h"
#include "tests/support/DialogTestSupport.h"
#include "ui/Handle.h"

namespace tellurvane {
namespace {

// The open editor and its user.
class OpenEditor {
 public:
  explicit OpenEditor(HWND window) : window_(window) {}

  HWND Window() const { return window_; }
  HWND Box() const { return InsideOf(window_, L"RichEdit20W").at(0); }
  // The control of that text; fails the test if there is none.
  HWND Control(const wchar_t* windowClass, const std::wstring& text) const {
    for (const HWND child : InsideOf(window_, windowClass)) {
      if (WindowText(child) == text) return child;
    }
    ADD_FAILURE() << "no control " << Utf8(text);
    return nullptr;
  }
  Color ColorOf(const std::wstring& label) const {
    const HWND control = Control(L"Static", label);
    const UniqueMemoryDc context(CreateCompatibleDC(nullptr));
    SendMessageW(GetParent(control), WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(context.Get()),
                 reinterpret_cast<LPARAM>(control));
    return GetTextColor(context.Get());
  }
  std::wstring Text() const { return WindowText(Box()); }
  void Write(const std::wstring& text) const {
    SendMessageW(Box(), EM_SETSEL, 0, -1);
    SendMessageW(Box(), EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text.c_str()));
  }
  void Press(const std::wstring& button) const {
    SendMessageW(Control(L"Button", button), BM_CLICK, 0, 0);
  }

 private:
  HWND window_;
};

class frmNotesEditTest : public testing::Test {
 protected:
  // Opens the editor on a stored text. Returns the written text.
  std::optional<std::wstring> Edit(const std::wstring& source,
                                   const std::function<void(const OpenEditor&)>& use) {
    std::optional<std::wstring> written;
    frmNotesEdit editor(source, [&](const std::wstring& text) { written = text; });
    owner.ActLater([&] { use(OpenEditor(editor.hwnd())); });
    editor.Open(owner.hwnd());
    EXPECT_FALSE(editor.IsLoaded());
    EXPECT_TRUE(owner.Enabled());
    return written;
  }

  ActingForm owner;
};

TEST_F(frmNotesEditTest, ShowsTheHintTheTextAndTwoButtons) {
  Edit(L"a\\r\\nb", [this](const OpenEditor& editor) {
    editor.Control(L"Static", L"撰寫時請勿超過 8 行，每行限制字數為 21 字");
    EXPECT_EQ(editor.Text(), L"a\r\nb");
    EXPECT_EQ(GetFocus(), editor.Box());
    EXPECT_FALSE(owner.Enabled());
    ExpectBoxesApart(editor.Window(), 5);
    editor.Press(L"關 閉");
  });
}

TEST_F(frmNotesEditTest, OnlyOkWritesAndOnlyAChangedText) {
  enum Way { kOk, kCancel, kEscape, kCloseBox };
  const std::optional<std::wstring> none;
  const std::wstring tooLong(30, L'字');
  const struct {
    std::wstring source;
    std::optional<std::wstring> typed;
    Way close;
    std::optional<std::wstring> written;
  } rows[] = {
      {L"before", L"a\r\nb", kOk, L"a\\r\\nb"},
      {L"before", L"一\r\n\r\n三\r\n", kOk, L"一\\r\\n\\r\\n三\\r\\n"},
      {L"before", tooLong, kOk, tooLong},  // the limit is only advice
      {L"before", L"", kOk, none},
      {L"before", L"after", kCancel, none},
      {L"before", L"after", kEscape, none},
      {L"before", L"after", kCloseBox, none},
      {L"a\\r\\nb", none, kOk, none},
      {L"\\r\\n\\r\\n", none, kOk, none},
      {L"C:\\\\r\\n\\", none, kOk, none},
      {L"a\rb\nc", none, kOk, none},
      {L"\xD83D\xDE00 \\n\\r\t", none, kOk, none},
      {std::wstring(5'000, L'字'), none, kOk, none},
  };
  for (const auto& row : rows) {
    const auto use = [&row](const OpenEditor& editor) {
      if (row.typed) editor.Write(*row.typed);
      if (row.close == kOk) editor.Press(L"確 定");
      if (row.close == kCancel) editor.Press(L"關 閉");
      if (row.close == kEscape) PostMessageW(editor.Box(), WM_KEYDOWN, VK_ESCAPE, 1);
      if (row.close == kCloseBox) PostMessageW(editor.Window(), WM_CLOSE, 0, 0);
    };
    EXPECT_EQ(Edit(row.source, use), row.written) << Utf8(row.source);
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
      const Color now = editor.ColorOf(row.count);
      EXPECT_EQ(now != calm, row.isTooMuch);
      EXPECT_EQ((now & 0xFF) > 2 * ((now >> 16) & 0xFF), row.isTooMuch) << "red";
      editor.Press(L"關 閉");
    });
  }
}

TEST_F(frmNotesEditTest, LeaksNothing) {
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
