// A window as a screen reader sees it, and the events that it hears.
#pragma once

#include <windows.h>

#include <oleacc.h>

#include <string>
#include <vector>

#include "ui/Com.h"

namespace tellurvane {

// Asked through the system, as a screen reader asks. Null if the window gives no object.
ComPtr<IAccessible> AccessibleOf(HWND window);

VARIANT Self();
VARIANT ChildNumber(LONG number);

std::wstring NameOf(IAccessible& object, const VARIANT& child = Self());
std::wstring ValueOf(IAccessible& object, const VARIANT& child = Self());
// -1 without one.
long RoleOf(IAccessible& object, const VARIANT& child = Self());
long StateOf(IAccessible& object, const VARIANT& child = Self());

// A line for the window, "slider 音量 = 50 %", and lines for its visible child windows. Windows
// without a name that only hold others are left out. Wine knows the role of few native controls and
// calls the others "client"; they have their window class here.
std::string AccessibleTree(HWND window);

// The events of this process while the object lives, from the system's hook: "value 0001", with the
// child's number unless it is the window itself.
class HeardEvents {
 public:
  HeardEvents();
  HeardEvents(const HeardEvents&) = delete;
  HeardEvents& operator=(const HeardEvents&) = delete;
  ~HeardEvents();

  // Those of a window since the last time.
  std::vector<std::string> Of(HWND window);

 private:
  struct Event {
    HWND window;
    std::string text;
  };
  static void CALLBACK Hear(HWINEVENTHOOK hook, DWORD event, HWND window, LONG object, LONG child,
                            DWORD thread, DWORD time);

  static std::vector<Event> heard_;
  HWINEVENTHOOK hook_;
};

}  // namespace tellurvane
