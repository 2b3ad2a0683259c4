// The common part of the program's own COM objects.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <atomic>

namespace tellurvane {

// Counts its references, beginning with one, and has no type information.
template <typename Interface>
class DispatchObject : public Interface {
 public:
  DispatchObject() = default;
  DispatchObject(const DispatchObject&) = delete;
  DispatchObject& operator=(const DispatchObject&) = delete;
  virtual ~DispatchObject() = default;

  STDMETHODIMP_(ULONG) AddRef() noexcept override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() noexcept override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

  STDMETHODIMP GetTypeInfoCount(UINT* count) noexcept override {
    if (count == nullptr) return E_POINTER;
    *count = 0;
    return S_OK;
  }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) noexcept override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) noexcept override {
    return E_NOTIMPL;
  }

 private:
  std::atomic<ULONG> references_ = 1;
};

}  // namespace tellurvane
