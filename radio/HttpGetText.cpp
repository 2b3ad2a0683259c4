#include "radio/HttpGetText.h"

#include <msxml.h>
#include <wininet.h>

#include "ui/Com.h"

namespace tellurvane {
namespace {

// Deliberate, with its odd language tag: to this browser the directories send the pages that the
// parsers can read.
constexpr const wchar_t* kUserAgent =
    L"Mozilla/5.0 (Windows; U; Windows NT 5.1; zh-en; rv:1.9.2) Gecko/20100115 Firefox/3.6";

// IXMLHttpRequest, which the cross compiler's header names without its number.
constexpr IID kRequestId = {
    0xED8C108D, 0x4349, 0x11D2, {0x91, 0xA4, 0x00, 0xC0, 0x4F, 0x79, 0x69, 0xE8}};

void Require(HRESULT result) {
  if (FAILED(result)) throw FetchError(result);
}

ComPtr<IXMLHttpRequest> MakeRequest() {
  CLSID id = {};
  Require(CLSIDFromProgID(L"Microsoft.XMLHTTP", &id));
  ComPtr<IXMLHttpRequest> request;
  Require(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, kRequestId, request.ReceiveVoid()));
  if (!request) throw FetchError(E_NOINTERFACE);
  return request;
}

}  // namespace

std::wstring HttpGetText(const std::wstring& url) {
  const ComPtr<IXMLHttpRequest> request = MakeRequest();
  // Most pages are not in the cache; the next fetch must not find this one there.
  (void)DeleteUrlCacheEntryW(url.c_str());
  Variant isAsynchronous(false);
  Variant noUser;
  Variant noPassword;
  Variant noBody;
  Require(request->open(Bstr(L"GET").Get(), Bstr(url).Get(), isAsynchronous.Get(), noUser.Get(),
                        noPassword.Get()));
  Require(request->setRequestHeader(Bstr(L"User-Agent").Get(), Bstr(kUserAgent).Get()));
  Require(request->send(noBody.Get()));
  Bstr text;
  Require(request->get_responseText(text.Receive()));
  return text.Text();
}

}  // namespace tellurvane
