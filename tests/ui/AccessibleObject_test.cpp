// What a screen reader reads and hears.
#include "ui/AccessibleObject.h"

#include <gmock/gmock.h>

#include "SliderTestSupport.h"
#include "tests/support/AccessibleSupport.h"
#include "tests/support/FormProbe.h"
#include "ui/BoxedControl.h"

namespace tellurvane {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

class AccessibleTest : public SliderTest {
 protected:
  ComApartment apartment_;
  HeardEvents heard;
};

TEST_F(AccessibleTest, ASliderHasItsNameAndItsValueAsAPercentage) {
  slider.AccessibleName(L"音量");
  slider.Value(50);
  const auto object = AccessibleOf(host.hwnd());
  EXPECT_EQ(RoleOf(*object.Get()), ROLE_SYSTEM_SLIDER);
  EXPECT_EQ(NameOf(*object.Get()), L"音量");
  EXPECT_EQ(ValueOf(*object.Get()), L"50 %");
  slider.ValueText = [] { return L"12.50 %"; };
  EXPECT_EQ(ValueOf(*object.Get()), L"12.50 %");
  EXPECT_EQ(StateOf(*object.Get()) & STATE_SYSTEM_UNAVAILABLE, 0);
  slider.Enabled(false);
  EXPECT_NE(StateOf(*object.Get()) & STATE_SYSTEM_UNAVAILABLE, 0);
}

TEST_F(AccessibleTest, AScreenReaderSetsASliderAsTheUserDoes) {
  const auto object = AccessibleOf(host.hwnd());
  EXPECT_EQ(object->put_accValue(Self(), Bstr(L"37.5 %").Get()), S_OK);
  EXPECT_THAT(Events(), ElementsAre("PositionSet 37.5", "PositionSetByMouse 37.5"));
  EXPECT_EQ(object->put_accValue(Self(), Bstr(L"loud").Get()), E_INVALIDARG);
  slider.Enabled(false);
  EXPECT_EQ(object->put_accValue(Self(), Bstr(L"10").Get()), E_INVALIDARG);
  EXPECT_THAT(Events(), IsEmpty());
}

TEST_F(AccessibleTest, OnlyTheUsersChangesOfASliderAreReported) {
  slider.Value(20);
  EXPECT_THAT(heard.Of(host.hwnd()), IsEmpty());
  Press(35);
  Release(35);
  EXPECT_THAT(heard.Of(host.hwnd()), Contains("value").Times(1));
  Key(VK_RIGHT);
  EXPECT_THAT(heard.Of(host.hwnd()), ElementsAre("value"));
}

TEST_F(AccessibleTest, AFieldHasTheNameOfTheLabelBesideIt) {
  BoxedControl label;
  label.Create(form.hwnd(), ControlKind::kLabel, L"來源音樂");
  for (const ControlKind kind :
       {ControlKind::kEditBox, ControlKind::kDropDownList, ControlKind::kRichEditBox}) {
    BoxedControl field;
    field.Create(form.hwnd(), kind, L"");
    label.control.text(L"來源音樂");
    NameByLabel(field.control.hwnd(), label.control.hwnd());
    const auto object = AccessibleOf(field.control.hwnd());
    EXPECT_EQ(NameOf(*object.Get()), L"來源音樂");
    label.control.text(L"提醒文字");
    EXPECT_EQ(NameOf(*object.Get()), L"提醒文字");
  }
}

TEST_F(AccessibleTest, ANamedFieldKeepsTheSystemsRoleValueAndPlace) {
  BoxedControl field;
  field.Create(form.hwnd(), ControlKind::kEditBox, L"早晨新聞");
  field.Move(10, 100, 120, 30);
  const auto before = AccessibleOf(field.control.hwnd());
  NameByText(field.control.hwnd(), L"專案名稱");
  const auto object = AccessibleOf(field.control.hwnd());
  EXPECT_EQ(NameOf(*object.Get()), L"專案名稱");
  EXPECT_EQ(RoleOf(*object.Get()), RoleOf(*before.Get()));
  EXPECT_EQ(StateOf(*object.Get()), StateOf(*before.Get()));
  EXPECT_EQ(ValueOf(*object.Get()), L"早晨新聞");
  LONG x = 0;
  LONG y = 0;
  LONG width = 0;
  LONG height = 0;
  EXPECT_EQ(object->accLocation(&x, &y, &width, &height, Self()), S_OK);
  EXPECT_EQ(width, 120);
  HWND window = nullptr;
  EXPECT_EQ(WindowFromAccessibleObject(object.Get(), &window), S_OK);
  EXPECT_EQ(window, field.control.hwnd());
}

TEST_F(AccessibleTest, TheDefaultActionIsDone) {
  int acts = 0;
  PictureBox box;
  box.Create({.parent = form.hwnd(), .width = 10, .height = 10});
  MakeAccessible(box.hwnd(), {.role = ROLE_SYSTEM_PUSHBUTTON,
                              .name = [] { return L"關閉"; },
                              .actionName = L"按下",
                              .act = [&] { ++acts; }});
  const auto object = AccessibleOf(box.hwnd());
  Bstr action;
  EXPECT_EQ(object->get_accDefaultAction(Self(), action.Receive()), S_OK);
  EXPECT_EQ(action.Text(), L"按下");
  EXPECT_EQ(object->accDoDefaultAction(Self()), S_OK);
  EXPECT_EQ(acts, 1);
}

TEST_F(AccessibleTest, ChildWindowsThatAreOnlyAPictureAreNoChildren) {
  PictureBox box;
  box.Create({.parent = form.hwnd(), .width = 10, .height = 10});
  PictureBox part;
  part.Create({.parent = box.hwnd(), .width = 5, .height = 5});
  for (const bool hasNoChildren : {false, true}) {
    MakeAccessible(box.hwnd(), {.hasNoChildren = hasNoChildren});
    const auto object = AccessibleOf(box.hwnd());
    LONG children = -1;
    EXPECT_EQ(object->get_accChildCount(&children), S_OK);
    EXPECT_EQ(children, hasNoChildren ? 0 : 1);
    ComPtr<IEnumVARIANT> list;
    EXPECT_EQ(FAILED(object->QueryInterface(__uuidof(IEnumVARIANT), list.ReceiveVoid())),
              hasNoChildren);
    const RECT place = OnScreen(part.hwnd());
    Variant hit;
    EXPECT_EQ(object->accHitTest(place.left, place.top, &hit.Get()), S_OK);
    EXPECT_EQ(hit.Get().vt == VT_I4, hasNoChildren) << "not the child's object";
    Variant first;
    // Wine's own objects answer neither question.
    EXPECT_EQ(object->accNavigate(NAVDIR_FIRSTCHILD, Self(), &first.Get()) == S_FALSE,
              hasNoChildren);
    ComPtr<IDispatch> child;
    EXPECT_EQ(object->get_accChild(ChildNumber(1), child.Receive()) == S_FALSE, hasNoChildren);
  }
}

TEST_F(AccessibleTest, ThePartWithTheKeyboardIsNamedByItsNumber) {
  PictureBox box;
  box.Create({.parent = form.hwnd(), .width = 10, .height = 10});
  long focused = 3;
  MakeAccessible(box.hwnd(), {.focusedChild = [&] { return focused; }});
  const auto object = AccessibleOf(box.hwnd());
  const auto child = [&] {
    Variant answer;
    EXPECT_HRESULT_SUCCEEDED(object->get_accFocus(&answer.Get()));
    return answer.Get().vt == VT_I4 ? answer.Get().lVal : -1;
  };
  EXPECT_EQ(child(), 3);
  focused = 0;
  box.SetFocus();
  EXPECT_EQ(child(), 0) << "the system's answer";
}

// A callback may handle messages. Its copies that are alive are counted.
class EndsItsWindow {
 public:
  explicit EndsItsWindow(std::unique_ptr<PictureBox>& box) : box_(&box) { ++alive; }
  EndsItsWindow(const EndsItsWindow& other) : box_(other.box_) { ++alive; }
  EndsItsWindow& operator=(const EndsItsWindow&) = delete;
  ~EndsItsWindow() { --alive; }
  static int alive;

 protected:
  void End() const {
    box_->reset();
    EXPECT_GT(alive, 0) << "the callback itself is gone";
  }

 private:
  std::unique_ptr<PictureBox>* box_;
};
int EndsItsWindow::alive = 0;

struct EndingName : EndsItsWindow {
  using EndsItsWindow::EndsItsWindow;
  std::wstring operator()() const {
    End();
    return L"名稱";
  }
};
struct EndingValue : EndsItsWindow {
  using EndsItsWindow::EndsItsWindow;
  bool operator()(const std::wstring&) const {
    End();
    return true;
  }
};
struct EndingAction : EndsItsWindow {
  using EndsItsWindow::EndsItsWindow;
  void operator()() const { End(); }
};

TEST_F(AccessibleTest, ACallbackMayEndItsWindow) {
  auto box = std::make_unique<PictureBox>();
  const auto objectWith = [&](AccessibleCallbacks callbacks) {
    box = std::make_unique<PictureBox>();
    box->Create({.parent = form.hwnd(), .width = 10, .height = 10});
    MakeAccessible(box->hwnd(), std::move(callbacks));
    return AccessibleOf(box->hwnd());
  };
  auto object = objectWith({.name = EndingName(box)});
  Bstr name;
  EXPECT_EQ(object->get_accName(Self(), name.Receive()), S_OK);
  EXPECT_EQ(name.Text(), L"名稱");
  object = objectWith({.setValue = EndingValue(box)});
  EXPECT_EQ(object->put_accValue(Self(), Bstr(L"50").Get()), S_OK);
  object = objectWith({.act = EndingAction(box)});
  EXPECT_EQ(object->accDoDefaultAction(Self()), S_OK);
  EXPECT_EQ(box, nullptr);
}

// Screen readers keep objects as long as they like.
TEST_F(AccessibleTest, AnObjectOutlivesItsWindowAndItsOwner) {
  auto box = std::make_unique<PictureBox>();
  box->Create({.parent = form.hwnd(), .width = 10, .height = 10});
  bool wasAsked = false;
  MakeAccessible(box->hwnd(), {.role = ROLE_SYSTEM_PUSHBUTTON,
                               .name =
                                   [&] {
                                     wasAsked = true;
                                     return std::wstring();
                                   },
                               .setValue = [](const std::wstring&) { return true; },
                               .act = [] {}});
  const auto ofBox = AccessibleOf(box->hwnd());
  box.reset();
  const auto ofSlider = AccessibleOf(host.hwnd());
  slider.TargetPictureBox(host);  // leaves the host
  for (const auto& object : {ofBox, ofSlider}) {
    Bstr text;
    VARIANT answer = {};
    LONG number = 0;
    EXPECT_EQ(object->get_accName(Self(), text.Receive()), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(object->get_accValue(Self(), text.Receive()), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(object->put_accValue(Self(), Bstr(L"1").Get()), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(object->get_accRole(Self(), &answer), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(object->get_accState(Self(), &answer), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(object->get_accChildCount(&number), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(object->accDoDefaultAction(Self()), CO_E_OBJNOTCONNECTED);
  }
  EXPECT_FALSE(wasAsked);
}

TEST_F(AccessibleTest, LeaksNothing) {
  const auto use = [&] {
    PictureBox box;
    box.Create({.parent = form.hwnd(), .width = 10, .height = 10});
    NameByText(box.hwnd(), L"名稱");
    const auto object = AccessibleOf(box.hwnd());
    EXPECT_EQ(NameOf(*object.Get()), L"名稱");
  };
  EXPECT_EQ(LeakedBy(use), ResourceCounts());
}

}  // namespace
}  // namespace tellurvane
