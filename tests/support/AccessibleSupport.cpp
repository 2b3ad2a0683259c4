#include "tests/support/AccessibleSupport.h"

#include <algorithm>
#include <array>
#include <map>

#include "base/CodePage.h"

namespace tellurvane {
namespace {

template <typename Question>
std::wstring TextFrom(IAccessible& object, Question question, const VARIANT& child) {
  Bstr text;
  return SUCCEEDED((object.*question)(child, text.Receive())) ? text.Text() : L"";
}

template <typename Question>
long NumberFrom(IAccessible& object, Question question, const VARIANT& child) {
  VARIANT number = {};
  if (FAILED((object.*question)(child, &number)) || number.vt != VT_I4) return -1;
  return number.lVal;
}

std::string RoleName(long role) {
  static const std::map<long, std::string> names = {
      {ROLE_SYSTEM_ALERT, "alert"},          {ROLE_SYSTEM_CLOCK, "clock"},
      {ROLE_SYSTEM_PUSHBUTTON, "button"},    {ROLE_SYSTEM_SLIDER, "slider"},
      {ROLE_SYSTEM_STATUSBAR, "status bar"}, {ROLE_SYSTEM_TEXT, "text"}};
  const auto found = names.find(role);
  return found == names.end() ? "role " + std::to_string(role) : found->second;
}

std::string ClassName(HWND window) {
  std::array<wchar_t, 64> name = {};
  GetClassNameW(window, name.data(), static_cast<int>(name.size()));
  return Utf8(name.data());
}

void AddTree(HWND window, const std::string& indent, std::string& tree) {
  std::string inside = indent;
  LONG children = -1;
  if (const ComPtr<IAccessible> object = AccessibleOf(window)) {
    const std::wstring name = NameOf(*object.Get());
    const std::wstring value = ValueOf(*object.Get());
    const long role = RoleOf(*object.Get());
    if (role != ROLE_SYSTEM_CLIENT || !name.empty()) {
      tree += indent + (role == ROLE_SYSTEM_CLIENT ? ClassName(window) : RoleName(role));
      if (!name.empty()) tree += " " + Utf8(name);
      if (!value.empty()) tree += " = " + Utf8(value);
      tree += "\n";
      inside += "  ";
    }
    object->get_accChildCount(&children);
  }
  if (children == 0) return;
  for (HWND child = GetWindow(window, GW_CHILD); child != nullptr;
       child = GetWindow(child, GW_HWNDNEXT)) {
    if ((GetWindowLongPtrW(child, GWL_STYLE) & WS_VISIBLE) != 0) AddTree(child, inside, tree);
  }
}

}  // namespace

ComPtr<IAccessible> AccessibleOf(HWND window) {
  ComPtr<IAccessible> object;
  (void)AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible),
                                   object.ReceiveVoid());
  return object;
}

VARIANT Self() { return ChildNumber(CHILDID_SELF); }

VARIANT ChildNumber(LONG number) {
  VARIANT child = {};
  child.vt = VT_I4;
  child.lVal = number;
  return child;
}

std::wstring NameOf(IAccessible& object, const VARIANT& child) {
  return TextFrom(object, &IAccessible::get_accName, child);
}

std::wstring ValueOf(IAccessible& object, const VARIANT& child) {
  return TextFrom(object, &IAccessible::get_accValue, child);
}

long RoleOf(IAccessible& object, const VARIANT& child) {
  return NumberFrom(object, &IAccessible::get_accRole, child);
}

long StateOf(IAccessible& object, const VARIANT& child) {
  return NumberFrom(object, &IAccessible::get_accState, child);
}

std::string AccessibleTree(HWND window) {
  std::string tree;
  AddTree(window, "", tree);
  return tree;
}

std::vector<HeardEvents::Event> HeardEvents::heard_;

HeardEvents::HeardEvents()
    : hook_(SetWinEventHook(EVENT_MIN, EVENT_MAX, nullptr, Hear, GetCurrentProcessId(), 0,
                            WINEVENT_OUTOFCONTEXT)) {
  heard_.clear();
}

HeardEvents::~HeardEvents() { UnhookWinEvent(hook_); }

void CALLBACK HeardEvents::Hear(HWINEVENTHOOK, DWORD event, HWND window, LONG object, LONG child,
                                DWORD, DWORD) {
  static const std::map<DWORD, std::string> names = {
      {EVENT_SYSTEM_ALERT, "alert"},         {EVENT_OBJECT_FOCUS, "focus"},
      {EVENT_OBJECT_SELECTION, "selection"}, {EVENT_OBJECT_STATECHANGE, "state"},
      {EVENT_OBJECT_VALUECHANGE, "value"},   {EVENT_OBJECT_NAMECHANGE, "name"}};
  const auto found = names.find(event);
  if (found == names.end() || object != OBJID_CLIENT) return;
  heard_.push_back({window, child == CHILDID_SELF ? found->second
                                                  : found->second + " " + std::to_string(child)});
}

std::vector<std::string> HeardEvents::Of(HWND window) {
  MSG message = {};
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
  std::vector<std::string> texts;
  for (const Event& event : heard_) {
    if (event.window == window) texts.push_back(event.text);
  }
  std::erase_if(heard_, [&](const Event& event) { return event.window == window; });
  return texts;
}

}  // namespace tellurvane
