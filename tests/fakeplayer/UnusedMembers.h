// The members of the control's interfaces that the program does not call: none is implemented.
#pragma once

#include <windows.h>

#include <wmp.h>

#include <atomic>

namespace fakeplayer {

// Counts references. An object has one interface.
template <typename Interface>
class Object : public Interface {
 public:
  Object() = default;
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;
  virtual ~Object() = default;

  STDMETHODIMP QueryInterface(REFIID id, void** object) override {
    if (!IsEqualIID(id, __uuidof(IUnknown)) && !IsEqualIID(id, __uuidof(Interface))) {
      *object = nullptr;
      return E_NOINTERFACE;
    }
    *object = static_cast<Interface*>(this);
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

 private:
  std::atomic<ULONG> references_ = 1;
};

template <typename Interface>
class Automation : public Object<Interface> {
 public:
  STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                      UINT*) override {
    return E_NOTIMPL;
  }
};

class UnusedControls : public Automation<IWMPControls> {
 public:
  STDMETHODIMP get_isAvailable(BSTR, VARIANT_BOOL*) override { return E_NOTIMPL; }
  STDMETHODIMP pause() override { return E_NOTIMPL; }
  STDMETHODIMP fastForward() override { return E_NOTIMPL; }
  STDMETHODIMP fastReverse() override { return E_NOTIMPL; }
  STDMETHODIMP next() override { return E_NOTIMPL; }
  STDMETHODIMP previous() override { return E_NOTIMPL; }
  STDMETHODIMP currentItem(IWMPMedia**) override { return E_NOTIMPL; }
  STDMETHODIMP put_currentItem(IWMPMedia*) override { return E_NOTIMPL; }
  STDMETHODIMP get_currentMarker(LONG*) override { return E_NOTIMPL; }
  STDMETHODIMP put_currentMarker(LONG) override { return E_NOTIMPL; }
  STDMETHODIMP playItem(IWMPMedia*) override { return E_NOTIMPL; }
};

class UnusedSettings : public Automation<IWMPSettings> {
 public:
  STDMETHODIMP get_isAvailable(BSTR, VARIANT_BOOL*) override { return E_NOTIMPL; }
  STDMETHODIMP get_autoStart(VARIANT_BOOL*) override { return E_NOTIMPL; }
  STDMETHODIMP get_baseURL(BSTR*) override { return E_NOTIMPL; }
  STDMETHODIMP put_baseURL(BSTR) override { return E_NOTIMPL; }
  STDMETHODIMP get_defaultFrame(BSTR*) override { return E_NOTIMPL; }
  STDMETHODIMP put_defaultFrame(BSTR) override { return E_NOTIMPL; }
  STDMETHODIMP get_invokeURLs(VARIANT_BOOL*) override { return E_NOTIMPL; }
  STDMETHODIMP put_invokeURLs(VARIANT_BOOL) override { return E_NOTIMPL; }
  STDMETHODIMP get_mute(VARIANT_BOOL*) override { return E_NOTIMPL; }
  STDMETHODIMP put_mute(VARIANT_BOOL) override { return E_NOTIMPL; }
  STDMETHODIMP get_playCount(LONG*) override { return E_NOTIMPL; }
  STDMETHODIMP put_playCount(LONG) override { return E_NOTIMPL; }
  STDMETHODIMP get_rate(double*) override { return E_NOTIMPL; }
  STDMETHODIMP put_rate(double) override { return E_NOTIMPL; }
  STDMETHODIMP get_balance(LONG*) override { return E_NOTIMPL; }
  STDMETHODIMP put_balance(LONG) override { return E_NOTIMPL; }
  STDMETHODIMP get_volume(LONG*) override { return E_NOTIMPL; }
  STDMETHODIMP getMode(BSTR, VARIANT_BOOL*) override { return E_NOTIMPL; }
  STDMETHODIMP get_enableErrorDialogs(VARIANT_BOOL*) override { return E_NOTIMPL; }
};

class UnusedMedia : public Automation<IWMPMedia> {
 public:
  STDMETHODIMP get_isIdentical(IWMPMedia*, VARIANT_BOOL*) override { return E_NOTIMPL; }
  STDMETHODIMP get_sourceURL(BSTR*) override { return E_NOTIMPL; }
  STDMETHODIMP get_name(BSTR*) override { return E_NOTIMPL; }
  STDMETHODIMP put_name(BSTR) override { return E_NOTIMPL; }
  STDMETHODIMP get_imageSourceWidth(LONG*) override { return E_NOTIMPL; }
  STDMETHODIMP get_imageSourceHeight(LONG*) override { return E_NOTIMPL; }
  STDMETHODIMP get_markerCount(LONG*) override { return E_NOTIMPL; }
  STDMETHODIMP getMarkerTime(LONG, double*) override { return E_NOTIMPL; }
  STDMETHODIMP getMarkerName(LONG, BSTR*) override { return E_NOTIMPL; }
  STDMETHODIMP get_attributeCount(LONG*) override { return E_NOTIMPL; }
  STDMETHODIMP getAttributeName(LONG, BSTR*) override { return E_NOTIMPL; }
  STDMETHODIMP getItemInfo(BSTR, BSTR*) override { return E_NOTIMPL; }
  STDMETHODIMP setItemInfo(BSTR, BSTR) override { return E_NOTIMPL; }
  STDMETHODIMP getItemInfoByAtom(LONG, BSTR*) override { return E_NOTIMPL; }
  STDMETHODIMP isMemberOf(IWMPPlaylist*, VARIANT_BOOL*) override { return E_NOTIMPL; }
  STDMETHODIMP isReadOnlyItem(BSTR, VARIANT_BOOL*) override { return E_NOTIMPL; }
};

class UnusedPlayer : public Automation<IWMPPlayer4> {
 public:
  STDMETHODIMP get_URL(BSTR*) override { return E_NOTIMPL; }
  STDMETHODIMP get_openState(WMPOpenState*) override { return E_NOTIMPL; }
  STDMETHODIMP put_currentMedia(IWMPMedia*) override { return E_NOTIMPL; }
  STDMETHODIMP get_mediaCollection(IWMPMediaCollection**) override { return E_NOTIMPL; }
  STDMETHODIMP get_playlistCollection(IWMPPlaylistCollection**) override { return E_NOTIMPL; }
  STDMETHODIMP get_versionInfo(BSTR*) override { return E_NOTIMPL; }
  STDMETHODIMP launchURL(BSTR) override { return E_NOTIMPL; }
  STDMETHODIMP get_network(IWMPNetwork**) override { return E_NOTIMPL; }
  STDMETHODIMP get_currentPlaylist(IWMPPlaylist**) override { return E_NOTIMPL; }
  STDMETHODIMP put_currentPlaylist(IWMPPlaylist*) override { return E_NOTIMPL; }
  STDMETHODIMP get_cdromCollection(IWMPCdromCollection**) override { return E_NOTIMPL; }
  STDMETHODIMP get_closedCaption(IWMPClosedCaption**) override { return E_NOTIMPL; }
  STDMETHODIMP get_isOnline(VARIANT_BOOL*) override { return E_NOTIMPL; }
  STDMETHODIMP get_Error(IWMPError**) override { return E_NOTIMPL; }
  STDMETHODIMP get_dvd(IWMPDVD**) override { return E_NOTIMPL; }
  STDMETHODIMP newPlaylist(BSTR, BSTR, IWMPPlaylist**) override { return E_NOTIMPL; }
  STDMETHODIMP newMedia(BSTR, IWMPMedia**) override { return E_NOTIMPL; }
  STDMETHODIMP get_enabled(VARIANT_BOOL*) override { return E_NOTIMPL; }
  STDMETHODIMP put_enabled(VARIANT_BOOL) override { return E_NOTIMPL; }
  STDMETHODIMP get_fullScreen(VARIANT_BOOL*) override { return E_NOTIMPL; }
  STDMETHODIMP put_fullScreen(VARIANT_BOOL) override { return E_NOTIMPL; }
  STDMETHODIMP get_enableContextMenu(VARIANT_BOOL*) override { return E_NOTIMPL; }
  STDMETHODIMP put_enableContextMenu(VARIANT_BOOL) override { return E_NOTIMPL; }
  STDMETHODIMP put_uiMode(BSTR) override { return E_NOTIMPL; }
  STDMETHODIMP get_uiMode(BSTR*) override { return E_NOTIMPL; }
  STDMETHODIMP get_stretchToFit(VARIANT_BOOL*) override { return E_NOTIMPL; }
  STDMETHODIMP put_stretchToFit(VARIANT_BOOL) override { return E_NOTIMPL; }
  STDMETHODIMP get_windowlessVideo(VARIANT_BOOL*) override { return E_NOTIMPL; }
  STDMETHODIMP put_windowlessVideo(VARIANT_BOOL) override { return E_NOTIMPL; }
  STDMETHODIMP get_isRemote(VARIANT_BOOL*) override { return E_NOTIMPL; }
  STDMETHODIMP get_playerApplication(IWMPPlayerApplication**) override { return E_NOTIMPL; }
  STDMETHODIMP openPlayer(BSTR) override { return E_NOTIMPL; }
};

}  // namespace fakeplayer
