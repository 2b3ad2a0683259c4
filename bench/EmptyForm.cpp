// A form of the toolkit with nothing in it, in a program that is set up as ours is: what the
// product's own windows and data cost is what the program needs beyond it. With any argument it
// shows one line of text, for which GDI+ looks at every font of the system.
#include <windows.h>

#include <commctrl.h>

#include "app/ModGeneral.h"
#include "ui/Boundary.h"
#include "ui/Com.h"
#include "ui/Form.h"
#include "ui/MessageLoop.h"
#include "ui/ModTheme.h"

namespace tellurvane {
namespace {

constexpr int kWidth = 5'320;
constexpr int kHeight = 5'000;

int Main(bool showsText) {
  if (!StartGdiplus()) return 1;
  const ComApartment apartment;
  InitCommonControls();
  Form form;
  const std::wstring name = showsText ? L"EmptyFormWithText" : L"EmptyForm";
  if (showsText) {
    form.Paint = [](HDC context) {
      ModTheme::Text(context, L"提醒一下", 10, 10, {.text = ModTheme::kBlueText}, {.size = 12});
    };
  }
  form.Load({.caption = name, .widthTwips = kWidth, .heightTwips = kHeight});
  form.Show();
  return RunMessageLoop();
}

}  // namespace
}  // namespace tellurvane

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR arguments, int) {
  return tellurvane::GuardBoundary([=] { return tellurvane::Main(*arguments != 0); });
}
