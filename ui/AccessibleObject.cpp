#include "ui/AccessibleObject.h"

#include <oleacc.h>

#include <memory>
#include <utility>

#include "ui/Boundary.h"
#include "ui/Com.h"
#include "ui/DispatchObject.h"
#include "ui/GXMSubclass.h"
#include "ui/Window.h"

namespace tellurvane {
namespace {

bool IsSelf(const VARIANT& child) { return child.vt == VT_I4 && child.lVal == CHILDID_SELF; }

VARIANT NumberOf(LONG number) {
  VARIANT variant = {};
  variant.vt = VT_I4;
  variant.lVal = number;
  return variant;
}

// Answers from the callbacks and passes every other question to the system's object. A callback is
// copied before the call, because it may handle messages that end the window.
class AccessibleObject final : public DispatchObject<IAccessible> {
 public:
  AccessibleObject(const AccessibleCallbacks& callbacks, ComPtr<IAccessible> system)
      : callbacks_(&callbacks), system_(std::move(system)) {}

  // From now on each question fails.
  void Detach() {
    callbacks_ = nullptr;
    system_.Reset();
  }

  STDMETHODIMP QueryInterface(REFIID id, void** object) noexcept override {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (IsEqualIID(id, __uuidof(IUnknown)) || IsEqualIID(id, __uuidof(IDispatch)) ||
        IsEqualIID(id, __uuidof(IAccessible))) {
      *object = static_cast<IAccessible*>(this);
      AddRef();
      return S_OK;
    }
    // The window's handle, and its child windows.
    const bool isOfSystem = IsEqualIID(id, __uuidof(IOleWindow)) ||
                            (IsEqualIID(id, __uuidof(IEnumVARIANT)) && !HasNoChildren());
    return isOfSystem && system_ ? system_->QueryInterface(id, object) : E_NOINTERFACE;
  }

  // Screen readers call the functions of IAccessible directly.
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                      UINT*) noexcept override {
    return E_NOTIMPL;
  }

  STDMETHODIMP get_accName(VARIANT child, BSTR* name) noexcept override {
    return Text(child, &AccessibleCallbacks::name, &IAccessible::get_accName, name);
  }
  STDMETHODIMP get_accValue(VARIANT child, BSTR* value) noexcept override {
    return Text(child, &AccessibleCallbacks::value, &IAccessible::get_accValue, value);
  }
  STDMETHODIMP get_accRole(VARIANT child, VARIANT* role) noexcept override {
    if (role == nullptr) return E_POINTER;
    if (callbacks_ == nullptr || callbacks_->role == 0 || !IsSelf(child)) {
      return AskSystem(&IAccessible::get_accRole, child, role);
    }
    *role = NumberOf(callbacks_->role);
    return S_OK;
  }
  STDMETHODIMP put_accValue(VARIANT child, BSTR value) noexcept override {
    if (callbacks_ == nullptr || !callbacks_->setValue || !IsSelf(child)) {
      return AskSystem(&IAccessible::put_accValue, child, value);
    }
    const auto set = callbacks_->setValue;
    return GuardBoundary([&] { return set(value == nullptr ? L"" : value) ? S_OK : E_INVALIDARG; });
  }
  STDMETHODIMP get_accDefaultAction(VARIANT child, BSTR* action) noexcept override {
    if (action == nullptr) return E_POINTER;
    if (!Acts(child)) return AskSystem(&IAccessible::get_accDefaultAction, child, action);
    *action = SysAllocString(callbacks_->actionName.c_str());
    return *action == nullptr ? E_OUTOFMEMORY : S_OK;
  }
  STDMETHODIMP accDoDefaultAction(VARIANT child) noexcept override {
    if (!Acts(child)) return AskSystem(&IAccessible::accDoDefaultAction, child);
    const auto act = callbacks_->act;
    return GuardBoundary([&] {
      act();
      return S_OK;
    });
  }

  STDMETHODIMP get_accChildCount(LONG* count) noexcept override {
    if (count == nullptr) return E_POINTER;
    if (!HasNoChildren()) return AskSystem(&IAccessible::get_accChildCount, count);
    *count = 0;
    return S_OK;
  }
  STDMETHODIMP get_accChild(VARIANT child, IDispatch** object) noexcept override {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (HasNoChildren()) return S_FALSE;
    return AskSystem(&IAccessible::get_accChild, child, object);
  }
  STDMETHODIMP get_accParent(IDispatch** parent) noexcept override {
    return AskSystem(&IAccessible::get_accParent, parent);
  }
  STDMETHODIMP get_accDescription(VARIANT child, BSTR* text) noexcept override {
    return AskSystem(&IAccessible::get_accDescription, child, text);
  }
  STDMETHODIMP get_accState(VARIANT child, VARIANT* state) noexcept override {
    return AskSystem(&IAccessible::get_accState, child, state);
  }
  STDMETHODIMP get_accHelp(VARIANT child, BSTR* text) noexcept override {
    return AskSystem(&IAccessible::get_accHelp, child, text);
  }
  STDMETHODIMP get_accHelpTopic(BSTR* file, VARIANT child, LONG* topic) noexcept override {
    return AskSystem(&IAccessible::get_accHelpTopic, file, child, topic);
  }
  STDMETHODIMP get_accKeyboardShortcut(VARIANT child, BSTR* text) noexcept override {
    return AskSystem(&IAccessible::get_accKeyboardShortcut, child, text);
  }
  STDMETHODIMP get_accFocus(VARIANT* focus) noexcept override {
    if (focus == nullptr) return E_POINTER;
    const long child = callbacks_ != nullptr && callbacks_->focusedChild
                           ? callbacks_->focusedChild()
                           : CHILDID_SELF;
    if (child != CHILDID_SELF) {
      *focus = NumberOf(child);
      return S_OK;
    }
    return AskSystem(&IAccessible::get_accFocus, focus);
  }
  STDMETHODIMP get_accSelection(VARIANT* selection) noexcept override {
    return AskSystem(&IAccessible::get_accSelection, selection);
  }
  STDMETHODIMP accSelect(LONG flags, VARIANT child) noexcept override {
    return AskSystem(&IAccessible::accSelect, flags, child);
  }
  STDMETHODIMP accLocation(LONG* x, LONG* y, LONG* width, LONG* height,
                           VARIANT child) noexcept override {
    return AskSystem(&IAccessible::accLocation, x, y, width, height, child);
  }
  STDMETHODIMP accNavigate(LONG direction, VARIANT start, VARIANT* end) noexcept override {
    if (end == nullptr) return E_POINTER;
    end->vt = VT_EMPTY;
    const bool isToChild = direction == NAVDIR_FIRSTCHILD || direction == NAVDIR_LASTCHILD;
    if (HasNoChildren() && isToChild) return S_FALSE;
    return AskSystem(&IAccessible::accNavigate, direction, start, end);
  }
  STDMETHODIMP accHitTest(LONG x, LONG y, VARIANT* child) noexcept override {
    if (child == nullptr) return E_POINTER;
    const HRESULT result = AskSystem(&IAccessible::accHitTest, x, y, child);
    // The system's answer may be a child window.
    if (result != S_OK || !HasNoChildren()) return result;
    VariantClear(child);
    *child = NumberOf(CHILDID_SELF);
    return S_OK;
  }
  STDMETHODIMP put_accName(VARIANT child, BSTR name) noexcept override {
    return AskSystem(&IAccessible::put_accName, child, name);
  }

 private:
  bool HasNoChildren() const { return callbacks_ != nullptr && callbacks_->hasNoChildren; }
  bool Acts(const VARIANT& child) const {
    return callbacks_ != nullptr && callbacks_->act && IsSelf(child);
  }

  template <typename... Parameters, typename... Arguments>
  HRESULT AskSystem(HRESULT (STDMETHODCALLTYPE IAccessible::*question)(Parameters...),
                    Arguments... arguments) {
    // Copied: the window may end while the system answers.
    const ComPtr<IAccessible> system = system_;
    return system ? (system.Get()->*question)(arguments...) : CO_E_OBJNOTCONNECTED;
  }

  HRESULT Text(VARIANT child, std::function<std::wstring()> AccessibleCallbacks::*own,
               HRESULT (STDMETHODCALLTYPE IAccessible::*system)(VARIANT, BSTR*), BSTR* text) {
    if (text == nullptr) return E_POINTER;
    *text = nullptr;
    if (callbacks_ == nullptr || !(callbacks_->*own) || !IsSelf(child)) {
      return AskSystem(system, child, text);
    }
    const auto ask = callbacks_->*own;
    return GuardBoundary([&] {
      const std::wstring answer = ask();
      *text = SysAllocStringLen(answer.data(), static_cast<UINT>(answer.size()));
      return *text == nullptr ? E_OUTOFMEMORY : S_OK;
    });
  }

  const AccessibleCallbacks* callbacks_;  // null without a window
  ComPtr<IAccessible> system_;
};

constexpr const wchar_t* kProperty = L"TellurvaneAccessible";

// Answers WM_GETOBJECT for one window, whose property names it.
class AccessibleWindow final : private GXISubclass {
 public:
  AccessibleWindow(HWND window, AccessibleCallbacks callbacks) : callbacks_(std::move(callbacks)) {
    engine_.Subclass(window, *this, 0);
    engine_.AddMessage(window, WM_GETOBJECT, kBeforePrevious);
    engine_.AddMessage(window, WM_NCDESTROY, kBeforePrevious);
  }
  AccessibleWindow(const AccessibleWindow&) = delete;
  AccessibleWindow& operator=(const AccessibleWindow&) = delete;
  ~AccessibleWindow() {
    if (object_) object_->Detach();
  }

 private:
  void WndProc(bool /*before*/, bool& handled, LRESULT& result, HWND window, UINT message,
               WPARAM wParam, LPARAM lParam, LONG_PTR& /*userParam*/) override {
    if (message == WM_NCDESTROY) {
      StopAccessible(window);  // deletes this
      return;
    }
    // Some systems fill the upper half with zeros.
    if (static_cast<LONG>(lParam) != static_cast<LONG>(OBJID_CLIENT)) return;
    if (!object_) object_ = ComPtr(new AccessibleObject(callbacks_, SystemObject(window, wParam)));
    result = LresultFromObject(__uuidof(IAccessible), wParam, object_.Get());
    handled = true;
  }

  // The object that the window has by itself: its own, or one that the system makes for its class.
  ComPtr<IAccessible> SystemObject(HWND window, WPARAM wParam) {
    ComPtr<IAccessible> object;
    const LRESULT own =
        engine_.CallOldWndProc(window, WM_GETOBJECT, wParam, static_cast<LPARAM>(OBJID_CLIENT));
    if (own > 0 &&
        SUCCEEDED(ObjectFromLresult(own, __uuidof(IAccessible), wParam, object.ReceiveVoid()))) {
      return object;
    }
    (void)CreateStdAccessibleObject(window, static_cast<LONG>(OBJID_CLIENT), __uuidof(IAccessible),
                                    object.ReceiveVoid());
    return object;
  }

  AccessibleCallbacks callbacks_;
  ComPtr<AccessibleObject> object_;  // made when it is first asked for
  GXMSubclass engine_;
};

}  // namespace

void MakeAccessible(HWND window, AccessibleCallbacks callbacks) {
  StopAccessible(window);
  auto made = std::make_unique<AccessibleWindow>(window, std::move(callbacks));
  // The window owns it. Without memory for the property the system alone answers.
  if (SetPropW(window, kProperty, made.get())) (void)made.release();
}

void StopAccessible(HWND window) {
  delete static_cast<AccessibleWindow*>(RemovePropW(window, kProperty));
}

void NameByLabel(HWND field, HWND label) {
  MakeAccessible(field, {.name = [label] { return TextOf(label); }});
}

void NameByText(HWND window, const std::wstring& name) {
  MakeAccessible(window, {.name = [name] { return name; }});
}

}  // namespace tellurvane
