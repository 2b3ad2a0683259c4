#include "mainwin/PlayerEvents.h"

#include <wmp.h>

#include <utility>

#include "ui/DispatchObject.h"

namespace tellurvane {
namespace {

constexpr DISPID kOpenStateChange = 5001;
constexpr DISPID kPlayStateChange = 5101;

class PlayerEvents final : public DispatchObject<IDispatch> {
 public:
  explicit PlayerEvents(std::shared_ptr<PlayerReports> reports) : reports_(std::move(reports)) {}

  STDMETHODIMP QueryInterface(REFIID id, void** object) noexcept override {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (!IsEqualIID(id, __uuidof(IUnknown)) && !IsEqualIID(id, __uuidof(IDispatch)) &&
        !IsEqualIID(id, __uuidof(_WMPOCXEvents))) {
      return E_NOINTERFACE;
    }
    *object = static_cast<IDispatch*>(this);
    AddRef();
    return S_OK;
  }

  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*, EXCEPINFO*,
                      UINT*) noexcept override {
    if (parameters == nullptr || parameters->cArgs != 1) return S_OK;
    // Signed or unsigned, depending on the control.
    const VARIANT& state = parameters->rgvarg[0];
    if (state.vt != VT_I4 && state.vt != VT_UI4) return S_OK;
    if (id == kPlayStateChange) reports_->PlayStateChanged(state.lVal);
    if (id == kOpenStateChange) reports_->OpenStateChanged(state.lVal);
    return S_OK;
  }

 private:
  std::shared_ptr<PlayerReports> reports_;
};

}  // namespace

ComPtr<IDispatch> MakePlayerEvents(std::shared_ptr<PlayerReports> reports) {
  return ComPtr<IDispatch>(new PlayerEvents(std::move(reports)));
}

}  // namespace tellurvane
