#include "radio/StationXml.h"

#include "base/CodePage.h"
#include "radio/DirectoryError.h"
#include "radio/XmlBody.h"
#include "ui/Com.h"
#include "ui/XmlDocument.h"

namespace tellurvane {
namespace {

constexpr const wchar_t* kNoList = L"電台目錄回應的不是電台清單，或資料不完整。";
constexpr const wchar_t* kNotUtf8 = L"電台目錄的資料不是 UTF-8 編碼，無法讀取。";
constexpr const wchar_t* kNoParser = L"無法使用系統的 XML 元件讀取電台目錄。";

void Require(HRESULT result, const wchar_t* reason) {
  if (result == E_OUTOFMEMORY) throw DirectoryError(kTooLargeAnswer);
  if (FAILED(result)) throw DirectoryError(reason);
}

// Empty when there is no such attribute.
std::wstring Attribute(IXMLDOMElement& element, const wchar_t* name) {
  Variant value;
  Require(element.getAttribute(Bstr(name).Get(), &value.Get()), kNoList);
  const VARIANT& read = value.Get();
  return read.vt == VT_BSTR && read.bstrVal != nullptr
             ? std::wstring(read.bstrVal, SysStringLen(read.bstrVal))
             : std::wstring();
}

BrowserStation StationOf(IXMLDOMNode& node) {
  ComPtr<IXMLDOMElement> element;
  Require(node.QueryInterface(IID_IXMLDOMElement, element.ReceiveVoid()), kNoList);
  return {.name = Attribute(*element.Get(), L"name"),
          .codec = Attribute(*element.Get(), L"codec"),
          .bitRate = Attribute(*element.Get(), L"bitrate"),
          .url = Attribute(*element.Get(), L"url"),
          .resolvedUrl = Attribute(*element.Get(), L"url_resolved"),
          .hls = Attribute(*element.Get(), L"hls")};
}

}  // namespace

std::vector<BrowserStation> ReadStationXml(const std::string& answer) {
  const std::optional<std::wstring> text = FromCodePage(CP_UTF8, answer);
  if (!text) throw DirectoryError(kNotUtf8);
  if (text->find(L"<!DOCTYPE") != std::wstring::npos) throw DirectoryError(kNoList);
  ComPtr<IXMLDOMDocument2> document;
  Require(MakeXmlDocument(document), kNoParser);
  VARIANT_BOOL isRead = VARIANT_FALSE;
  Require(document->loadXML(Bstr(XmlBody(*text)).Get(), &isRead), kNoList);
  if (isRead == VARIANT_FALSE) throw DirectoryError(kNoList);
  ComPtr<IXMLDOMNode> list;
  Require(document->selectSingleNode(Bstr(L"/result").Get(), list.Receive()), kNoList);
  if (!list) throw DirectoryError(kNoList);
  ComPtr<IXMLDOMNodeList> nodes;
  Require(list->selectNodes(Bstr(L"station").Get(), nodes.Receive()), kNoList);
  std::vector<BrowserStation> stations;
  ComPtr<IXMLDOMNode> node;
  for (;;) {
    const HRESULT result = nodes->nextNode(node.Receive());
    Require(result, kNoList);
    if (result != S_OK) return stations;
    stations.push_back(StationOf(*node.Get()));
  }
}

}  // namespace tellurvane
