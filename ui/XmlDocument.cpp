#include "ui/XmlDocument.h"

namespace tellurvane {
namespace {

// IXMLDOMDocument2, whose number is in none of the cross compiler's libraries.
constexpr IID kDocumentId = {
    0x2933BF95, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

}  // namespace

HRESULT MakeXmlDocument(ComPtr<IXMLDOMDocument2>& made) {
  CLSID id = {};
  HRESULT result = CLSIDFromProgID(L"Msxml2.DOMDocument.6.0", &id);
  if (FAILED(result)) return result;
  ComPtr<IXMLDOMDocument2> document;
  result = CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, kDocumentId, document.ReceiveVoid());
  if (FAILED(result)) return result;
  Variant isProhibited(true);
  const Bstr prohibitDtd(L"ProhibitDTD");
  for (const HRESULT set :
       {document->put_async(VARIANT_FALSE), document->put_validateOnParse(VARIANT_FALSE),
        document->put_resolveExternals(VARIANT_FALSE),
        document->setProperty(prohibitDtd.Get(), isProhibited.Get())}) {
    if (FAILED(set)) return set;
  }
  made = std::move(document);
  return S_OK;
}

}  // namespace tellurvane
