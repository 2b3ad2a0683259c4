// Ownership of COM references, strings and variants.
#pragma once

#include <windows.h>

#include <objbase.h>
#include <oleauto.h>

#include <new>
#include <string>
#include <string_view>
#include <utility>

namespace tellurvane {

// COM for the thread, as the user interface needs it, for as long as the object lives.
class ComApartment {
 public:
  ComApartment() : isReady_(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {}
  ComApartment(const ComApartment&) = delete;
  ComApartment& operator=(const ComApartment&) = delete;
  ~ComApartment() {
    if (isReady_) CoUninitialize();
  }

 private:
  bool isReady_;
};

template <typename Interface>
class ComPtr {
 public:
  ComPtr() = default;
  // Takes over a reference that the caller holds.
  explicit ComPtr(Interface* reference) : reference_(reference) {}
  ComPtr(const ComPtr& other) : reference_(other.reference_) {
    if (reference_ != nullptr) reference_->AddRef();
  }
  ComPtr(ComPtr&& other) noexcept : reference_(other.Detach()) {}
  ComPtr& operator=(const ComPtr& other) {
    *this = ComPtr(other);
    return *this;
  }
  ComPtr& operator=(ComPtr&& other) noexcept {
    std::swap(reference_, other.reference_);
    return *this;
  }
  ~ComPtr() { Reset(); }

  explicit operator bool() const { return reference_ != nullptr; }
  Interface* Get() const { return reference_; }
  Interface* operator->() const { return reference_; }

  // For calls that hand a reference out; what was held before is released first.
  Interface** Receive() {
    Reset();
    return &reference_;
  }
  void** ReceiveVoid() { return reinterpret_cast<void**>(Receive()); }

  Interface* Detach() { return std::exchange(reference_, nullptr); }

  void Reset() {
    if (Interface* const old = Detach()) old->Release();
  }

 private:
  Interface* reference_ = nullptr;
};

class Bstr {
 public:
  Bstr() = default;
  // Throws std::bad_alloc: a missing string would be read as an empty one.
  explicit Bstr(std::wstring_view text)
      : text_(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {
    if (text_ == nullptr) throw std::bad_alloc();
  }
  Bstr(const Bstr&) = delete;
  Bstr& operator=(const Bstr&) = delete;
  ~Bstr() { SysFreeString(text_); }

  BSTR Get() const { return text_; }
  BSTR* Receive() {
    SysFreeString(std::exchange(text_, nullptr));
    return &text_;
  }
  // Without a string the empty one, as COM has it.
  std::wstring Text() const {
    return text_ == nullptr ? std::wstring() : std::wstring(text_, SysStringLen(text_));
  }

 private:
  BSTR text_ = nullptr;
};

class Variant {
 public:
  Variant() { VariantInit(&value_); }
  explicit Variant(bool flag) : Variant() {
    value_.vt = VT_BOOL;
    value_.boolVal = flag ? VARIANT_TRUE : VARIANT_FALSE;
  }
  Variant(const Variant&) = delete;
  Variant& operator=(const Variant&) = delete;
  ~Variant() { VariantClear(&value_); }

  VARIANT& Get() { return value_; }

 private:
  VARIANT value_;
};

}  // namespace tellurvane
