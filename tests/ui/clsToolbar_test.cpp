#include "ui/clsToolbar.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <memory>

#include "ControlTestSupport.h"
#include "SubclassTestSupport.h"
#include "tests/support/AccessibleSupport.h"
#include "tests/support/FormProbe.h"
#include "tests/support/WindowTestSupport.h"

namespace tellurvane {
namespace {

using testing::ElementsAre;

constexpr int kImageSize = 16;
constexpr Color kRed = Rgb(255, 0, 0);
constexpr Color kGreen = Rgb(0, 128, 0);
constexpr Color kFrame = Rgb(0x4B, 0x00, 0x82);

// Images of plain colours in a white margin of two pixels, side by side.
UniqueBitmap MakeImages(const std::vector<Color>& colors) {
  const int width = static_cast<int>(colors.size()) * kImageSize;
  BITMAPINFO layout = {};
  layout.bmiHeader = {sizeof(layout.bmiHeader), width, kImageSize, 1, 24, BI_RGB, 0, 0, 0, 0, 0};
  void* bits = nullptr;
  UniqueBitmap bitmap(CreateDIBSection(nullptr, &layout, DIB_RGB_COLORS, &bits, nullptr, 0));
  const UniqueMemoryDc canvas(CreateCompatibleDC(nullptr));
  const SelectedObject selected(canvas.Get(), bitmap.Get());
  PatBlt(canvas.Get(), 0, 0, width, kImageSize, WHITENESS);
  for (int i = 0; i < static_cast<int>(colors.size()); ++i) {
    const RECT inside = {i * kImageSize + 2, 2, (i + 1) * kImageSize - 2, kImageSize - 2};
    const UniqueBrush brush(CreateSolidBrush(colors[static_cast<size_t>(i)]));
    FillRect(canvas.Get(), &inside, brush.Get());
  }
  return bitmap;
}

void AddImages(clsToolbar& toolbar, const std::vector<Color>& colors) {
  toolbar.AddBitmap(MakeImages(colors).Get(), kWhite);
}

class ToolbarTest : public testing::Test {
 protected:
  void SetUp() override {
    host->Create({.parent = form.hwnd(),
                  .x = 5,
                  .y = 3,
                  .width = 330,
                  .height = 26,
                  .backColor = kHostColor});
    toolbar->TargetPictureBox(*host);
    toolbar->Create(kImageSize);
    toolbar->ButtonClick = [this](int id) { clicks.push_back(id); };
  }

  void AddTwoButtons() {
    AddImages(*toolbar, {kRed, kGreen});
    toolbar->AddButton(0, L"第一個");
    toolbar->AddButton(1, L"");
  }

  LRESULT Ask(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return SendMessageW(toolbar->hwnd(), message, wParam, lParam);
  }

  POINT CenterOf(int id) const {
    RECT place = {};
    Ask(TB_GETRECT, static_cast<WPARAM>(id), reinterpret_cast<LPARAM>(&place));
    return {(place.left + place.right) / 2, (place.top + place.bottom) / 2};
  }

  void Click(int id) const {
    const POINT at = CenterOf(id);
    SendMouse(toolbar->hwnd(), WM_LBUTTONDOWN, at.x, at.y, MK_LBUTTON);
    SendMouse(toolbar->hwnd(), WM_LBUTTONUP, at.x, at.y);
  }

  // The answer to a tooltip that asks for its text in ANSI; null without one.
  const char* TipOf(int id) const {
    NMTTDISPINFOA request = {};
    request.hdr.code = TTN_GETDISPINFOA;
    request.hdr.idFrom = static_cast<UINT_PTR>(id);
    SendMessageW(host->hwnd(), WM_NOTIFY, request.hdr.idFrom, reinterpret_cast<LPARAM>(&request));
    return request.lpszText;
  }

  KeyForm form;
  std::unique_ptr<PictureBox> host = std::make_unique<PictureBox>();
  std::unique_ptr<clsToolbar> toolbar = std::make_unique<clsToolbar>();
  std::vector<int> clicks;
};

std::string Ansi(const std::wstring& text) {
  std::array<char, 200> buffer = {};
  WideCharToMultiByte(CP_ACP, 0, text.c_str(), -1, buffer.data(), static_cast<int>(buffer.size()),
                      nullptr, nullptr);
  return buffer.data();
}

TEST_F(ToolbarTest, FillsItsHostAsAFlatToolbarWithToolTips) {
  EXPECT_EQ(ClassOf(toolbar->hwnd()), L"ToolbarWindow32");
  EXPECT_EQ(GetParent(toolbar->hwnd()), host->hwnd());
  const auto style = static_cast<DWORD>(GetWindowLongPtrW(toolbar->hwnd(), GWL_STYLE));
  const DWORD expected =
      WS_CHILD | WS_VISIBLE | TBSTYLE_FLAT | TBSTYLE_TOOLTIPS | CCS_NODIVIDER | CCS_NORESIZE;
  EXPECT_EQ(style & expected, expected);
  EXPECT_EQ(style & TBSTYLE_LIST, 0U);
  EXPECT_EQ(Ask(TB_GETEXTENDEDSTYLE) & TBSTYLE_EX_DRAWDDARROWS, 1);
  for (const SIZE& size : {SIZE{330, 26}, SIZE{200, 22}}) {
    host->Move(5, 3, size.cx, size.cy);
    RECT place = OnScreen(toolbar->hwnd());
    MapWindowPoints(nullptr, host->hwnd(), reinterpret_cast<POINT*>(&place), 2);
    const RECT whole = {0, 0, size.cx, size.cy};
    EXPECT_TRUE(EqualRect(&place, &whole)) << size.cx;
  }
}

TEST_F(ToolbarTest, TakesAnotherImageListWithoutOwningIt) {
  const UniqueImageList other(ImageList_Create(kImageSize, kImageSize, ILC_COLOR32, 1, 1));
  toolbar->ImageList(other.Get());
  EXPECT_EQ(toolbar->ImageList(), other.Get());
  AddImages(*toolbar, {kRed});
  toolbar.reset();
  EXPECT_EQ(ImageList_GetImageCount(other.Get()), 1);
}

TEST_F(ToolbarTest, EachButtonHasAnImageAndAState) {
  AddImages(*toolbar, {kRed, kGreen});
  EXPECT_EQ(toolbar->AddButton(1, L"甲"), 1);
  EXPECT_EQ(toolbar->AddButton(0, L"乙"), 2);
  EXPECT_EQ(Ask(TB_BUTTONCOUNT), 2);
  EXPECT_EQ(toolbar->ButtonImage(1), 1);
  EXPECT_EQ(toolbar->ButtonImage(2), 0);
  toolbar->ButtonImage(1, 0);
  EXPECT_EQ(toolbar->ButtonImage(1), 0);

  toolbar->Enabled(2, false);
  EXPECT_FALSE(toolbar->Enabled(2));
  EXPECT_TRUE(toolbar->Visible(2));
  EXPECT_TRUE(toolbar->Enabled(1));
  toolbar->Visible(2, false);
  EXPECT_FALSE(toolbar->Visible(2));
  EXPECT_EQ(Ask(TB_GETSTATE, 2), TBSTATE_HIDDEN) << "still disabled";
  toolbar->Enabled(2, true);
  EXPECT_EQ(Ask(TB_GETSTATE, 2), TBSTATE_HIDDEN | TBSTATE_ENABLED);
  toolbar->Visible(2, true);
  EXPECT_EQ(Ask(TB_GETSTATE, 2), TBSTATE_ENABLED);
}

TEST_F(ToolbarTest, ReportsAPressedButtonThatIsEnabled) {
  AddTwoButtons();
  Click(2);
  Click(1);
  toolbar->Enabled(1, false);
  Click(1);
  EXPECT_EQ(clicks, (std::vector<int>{2, 1}));
}

// Through the message loop.
class ToolbarKeysTest : public ToolbarTest {
 protected:
  void SetUp() override {
    ToolbarTest::SetUp();
    for (int i = 0; i < 5; ++i) toolbar->AddButton(0, L"", L"按鈕");
    toolbar->Enabled(3, false);
    form.SetFocus();
    Key(form.hwnd(), VK_TAB);
    ASSERT_EQ(GetFocus(), toolbar->hwnd());
  }
  static void Key(HWND window, UINT key, LPARAM lParam = 1) {
    PostMessageW(window, WM_KEYDOWN, key, lParam);
    Pump();
  }
  std::vector<int> PressedAfter(const std::vector<UINT>& keys) {
    clicks.clear();
    for (const UINT key : keys) Key(toolbar->hwnd(), key);
    return clicks;
  }
  // The pixels of a button on the screen.
  std::vector<Color> Picture(int id) const {
    RECT place = {};
    Ask(TB_GETRECT, static_cast<WPARAM>(id), reinterpret_cast<LPARAM>(&place));
    const WindowDc screen(toolbar->hwnd());
    return PixelsIn(screen.Get(), place);
  }
};

TEST_F(ToolbarKeysTest, ArrowsMoveAndEnterAndSpacePress) {
  using Numbers = std::vector<int>;
  EXPECT_EQ(PressedAfter({VK_RETURN}), Numbers{1});
  EXPECT_EQ(PressedAfter({VK_RIGHT, VK_SPACE}), Numbers{2});
  EXPECT_EQ(PressedAfter({VK_DOWN, VK_RETURN}), Numbers{4}) << "passes over a disabled button";
  EXPECT_EQ(PressedAfter({VK_RIGHT, VK_RIGHT, VK_RETURN}), Numbers{5}) << "ends at the last one";
  EXPECT_EQ(PressedAfter({VK_LEFT, VK_UP, VK_RETURN}), Numbers{2});
  EXPECT_EQ(PressedAfter({VK_END, VK_RETURN}), Numbers{5});
  EXPECT_EQ(PressedAfter({VK_HOME, VK_LEFT, VK_RETURN}), Numbers{1});
  EXPECT_EQ(form.enters, 0);
}

TEST_F(ToolbarKeysTest, AKeyThatIsHeldDownAndADisabledButtonPressNothing) {
  Key(toolbar->hwnd(), VK_F24);  // the loop remembers the last press, also that of another test
  for (const UINT repeated : {VK_RETURN, VK_SPACE}) Key(toolbar->hwnd(), repeated, 0x4000'0001);
  EXPECT_TRUE(clicks.empty());
  toolbar->Enabled(1, false);
  EXPECT_TRUE(PressedAfter({VK_RETURN, VK_SPACE}).empty());
  toolbar->Enabled(1, true);
  EXPECT_EQ(PressedAfter({VK_RETURN}), std::vector<int>{1}) << "the keyboard stayed there";
}

TEST_F(ToolbarKeysTest, TellsAKeyFromTheMouse) {
  bool isByKey = false;
  toolbar->ButtonClick = [&](int) { isByKey = toolbar->IsPressedByKey(); };
  Key(toolbar->hwnd(), VK_RETURN);
  EXPECT_TRUE(isByKey);
  Click(1);
  EXPECT_FALSE(isByKey);
}

TEST_F(ToolbarKeysTest, FramesTheButtonThatAKeyPresses) {
  const auto framed = [&] {
    Pump();
    std::vector<int> buttons;
    for (int id = 1; id <= 5; ++id) {
      const std::vector<Color> picture = Picture(id);
      const bool hasFrame = picture.front() == kFrame && picture.back() == kFrame;
      if (hasFrame) buttons.push_back(id);
    }
    return buttons;
  };
  EXPECT_EQ(framed(), std::vector<int>{1});
  Key(toolbar->hwnd(), VK_END);
  EXPECT_EQ(framed(), std::vector<int>{5});
  form.SetFocus();
  EXPECT_EQ(framed(), std::vector<int>{});
}

TEST_F(ToolbarKeysTest, ReportsTheButtonThatHasTheKeyboard) {
  const ComApartment apartment;
  toolbar->AccessibleName(L"工具列");
  const auto object = AccessibleOf(toolbar->hwnd());
  const auto focused = [&] {
    Variant answer;
    EXPECT_HRESULT_SUCCEEDED(object->get_accFocus(&answer.Get()));
    return answer.Get().vt == VT_I4 ? answer.Get().lVal : -1;
  };
  HeardEvents heard;
  // The toolbar of Windows reports its hot item too, which is the same button.
  const auto changes = [&] {
    auto events = heard.Of(toolbar->hwnd());
    events.erase(std::unique(events.begin(), events.end()), events.end());
    return events;
  };
  Key(toolbar->hwnd(), VK_RIGHT);
  Key(toolbar->hwnd(), VK_RIGHT);
  EXPECT_THAT(changes(), ElementsAre("focus 2", "focus 4"));
  EXPECT_EQ(focused(), 4);
  EXPECT_EQ(NameOf(*object.Get()), L"工具列");
  Key(toolbar->hwnd(), VK_END);
  Key(toolbar->hwnd(), VK_RIGHT);
  EXPECT_THAT(changes(), ElementsAre("focus 5")) << "only when it moves";
  form.SetFocus();
  EXPECT_NE(focused(), 5);
  SetFocus(toolbar->hwnd());
  EXPECT_THAT(changes(), testing::Contains("focus 5"));
}

TEST_F(ToolbarKeysTest, TheKeyboardComesToAButtonThatCanBeUsed) {
  toolbar->Enabled(1, false);
  form.SetFocus();
  SetFocus(toolbar->hwnd());
  EXPECT_EQ(PressedAfter({VK_RETURN}), std::vector<int>{2});
}

// Otherwise the native toolbar marks another button beside the framed one.
TEST_F(ToolbarKeysTest, TheNativeMarkIsOnTheFramedButtonToo) {
  const auto hot = [this] { return static_cast<int>(Ask(TB_GETHOTITEM)); };
  EXPECT_EQ(hot(), 0);
  Key(toolbar->hwnd(), VK_END);
  EXPECT_EQ(hot(), 4);
  form.SetFocus();
  EXPECT_EQ(hot(), -1);
}

TEST_F(ToolbarTest, ACommandOfAnotherWindowIsNoButton) {
  AddTwoButtons();
  for (const HWND sender : {HWND{nullptr}, host->hwnd(), form.hwnd()}) {
    SendMessageW(host->hwnd(), WM_COMMAND, 1, reinterpret_cast<LPARAM>(sender));
  }
  EXPECT_TRUE(clicks.empty());
  SendMessageW(host->hwnd(), WM_COMMAND, MAKEWPARAM(2, 7),
               reinterpret_cast<LPARAM>(toolbar->hwnd()));
  EXPECT_EQ(clicks, std::vector<int>{2});
}

TEST_F(ToolbarTest, EndsBeforeOrAfterItsHost) {
  const HWND window = toolbar->hwnd();
  toolbar.reset();
  EXPECT_FALSE(IsWindow(window));
  EXPECT_TRUE(IsWindow(host->hwnd()));
  toolbar = std::make_unique<clsToolbar>();
  toolbar->TargetPictureBox(*host);
  toolbar->Create(kImageSize);
  const HWND other = toolbar->hwnd();
  host.reset();
  EXPECT_FALSE(IsWindow(other));
  EXPECT_EQ(toolbar->hwnd(), nullptr);
}

TEST_F(ToolbarTest, AnswersTheAnsiToolTipRequestOnly) {
  EXPECT_EQ(SendMessageW(host->hwnd(), WM_NOTIFYFORMAT, reinterpret_cast<WPARAM>(toolbar->hwnd()),
                         NF_QUERY),
            NFR_ANSI);
  EXPECT_EQ(
      SendMessageW(host->hwnd(), WM_NOTIFYFORMAT, reinterpret_cast<WPARAM>(form.hwnd()), NF_QUERY),
      NFR_UNICODE);
  toolbar->AddButton(0, L"第一個");
  toolbar->AddButton(0, L"");
  toolbar->AddButton(0, L"third");
  const char* const first = TipOf(1);
  EXPECT_STREQ(TipOf(3), "third");
  EXPECT_EQ(first, Ansi(L"第一個")) << "it stays valid";
  for (const int id : {2, 0, 4, -1}) EXPECT_EQ(TipOf(id), nullptr) << id;
  NMTTDISPINFOW request = {};
  request.hdr.code = TTN_GETDISPINFOW;
  request.hdr.idFrom = 1;
  SendMessageW(host->hwnd(), WM_NOTIFY, 1, reinterpret_cast<LPARAM>(&request));
  EXPECT_EQ(request.lpszText, nullptr);
}

TEST_F(ToolbarTest, ShowsChineseCaptionsInAnyCodePage) {
  AddImages(*toolbar, {kRed, kGreen});
  const std::vector<std::wstring> captions = {L"新 增", L"", L"停 止", L"設 定", L"離 開"};
  for (const std::wstring& caption : captions) toolbar->AddButton(0, L"", caption);
  for (size_t i = 0; i < captions.size(); ++i) {
    std::array<wchar_t, 40> text = {};
    Ask(TB_GETBUTTONTEXTW, i + 1, reinterpret_cast<LPARAM>(text.data()));
    EXPECT_EQ(text.data(), captions[i]);
  }
  EXPECT_NE(Ask(TB_GETSTYLE) & TBSTYLE_LIST, 0);
  const SIZE size = toolbar->ButtonsSize();
  EXPECT_LE(size.cx, 323);
  EXPECT_LE(size.cy, 26);
  EXPECT_GE(size.cy, 20);
  RECT last = {};
  Ask(TB_GETRECT, 5, reinterpret_cast<LPARAM>(&last));
  EXPECT_EQ(last.right, size.cx);
}

TEST_F(ToolbarTest, ShowsItsImagesOnItsHostsBackground) {
  AddTwoButtons();
  const auto onScreen = [&](int x, int y) {
    const WindowDc screen(toolbar->hwnd());
    return PixelOf(screen.Get(), x, y);
  };
  const POINT first = CenterOf(1);
  const POINT second = CenterOf(2);
  EXPECT_TRUE(PumpUntil([&] { return onScreen(first.x, first.y) == kRed; }));
  EXPECT_TRUE(PumpUntil([&] { return onScreen(second.x, second.y) == kGreen; }));
  EXPECT_EQ(onScreen(first.x - 7, first.y - 7), kHostColor) << "the mask's colour";
  EXPECT_EQ(onScreen(300, 13), kHostColor);
}

TEST_F(ToolbarTest, TheRealMouseBringsTheToolTipOfAButtonThatHasOne) {
  AddTwoButtons();
  int askedFor = 0;
  RecordingOwner spy;
  spy.onCall = [&](const SubclassCall& call) {
    const auto& notification = *reinterpret_cast<const NMHDR*>(call.lParam);
    if (notification.code == TTN_GETDISPINFOA) askedFor = static_cast<int>(notification.idFrom);
  };
  GXMSubclass engine;
  engine.Subclass(host->hwnd(), spy, 0);
  engine.AddMessage(host->hwnd(), WM_NOTIFY, kAfterPrevious);
  const auto moveMouseTo = [&](int id) {
    POINT at = CenterOf(id);
    ClientToScreen(toolbar->hwnd(), &at);
    SetCursorPos(at.x, at.y);
  };
  moveMouseTo(2);
  ASSERT_TRUE(PumpUntil([&] { return askedFor == 2; }));
  Pump();
  const auto tip = reinterpret_cast<HWND>(Ask(TB_GETTOOLTIPS));
  EXPECT_FALSE(IsWindowVisible(tip));
  moveMouseTo(1);
  ASSERT_TRUE(PumpUntil([&] { return IsWindowVisible(tip) != 0; }));
  EXPECT_EQ(askedFor, 1);
  EXPECT_EQ(Ansi(WindowText(tip)), Ansi(L"第一個"));
  // Some programs send this to every window of the screen.
  SendMessageW(tip, WM_CLOSE, 0, 0);
  EXPECT_TRUE(IsWindow(tip));
  SetCursorPos(700, 700);
}

}  // namespace
}  // namespace tellurvane
