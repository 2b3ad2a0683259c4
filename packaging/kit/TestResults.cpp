#include "packaging/kit/TestResults.h"

#include <functional>
#include <stdexcept>

#include "base/CodePage.h"
#include "ui/XmlDocument.h"

namespace tellurvane {
namespace {

// GoogleTest prints these around each test.
constexpr std::string_view kRun = "[ RUN      ] ";
constexpr const char* kPassed = "[       OK ] ";
constexpr const char* kFailed = "[  FAILED  ] ";
constexpr const char* kSkipped = "[  SKIPPED ] ";

// A call that fails must not make a failed test look like one that passed.
void Require(HRESULT result) {
  if (FAILED(result)) throw std::runtime_error("the XML parser failed");
}

void ForEachNode(IXMLDOMNode& parent, const wchar_t* path,
                 const std::function<void(IXMLDOMNode&)>& use) {
  ComPtr<IXMLDOMNodeList> nodes;
  Require(parent.selectNodes(Bstr(path).Get(), nodes.Receive()));
  for (;;) {
    ComPtr<IXMLDOMNode> node;
    const HRESULT result = nodes->nextNode(node.Receive());
    Require(result);
    if (result != S_OK) return;
    use(*node.Get());
  }
}

// The values of the attributes that the path selects.
std::vector<std::string> Values(IXMLDOMNode& parent, const wchar_t* path) {
  std::vector<std::string> values;
  ForEachNode(parent, path, [&](IXMLDOMNode& node) {
    Variant value;
    Require(node.get_nodeValue(&value.Get()));
    values.push_back(value.Get().vt == VT_BSTR ? Utf8(value.Get().bstrVal) : "");
  });
  return values;
}

std::string Lines(const std::vector<std::string>& values) {
  std::string text;
  for (const std::string& value : values) text += (text.empty() ? "" : "\n") + value;
  return text;
}

void AddTest(IXMLDOMNode& test, TestResults& results) {
  const std::string name = Lines(Values(test, L"@classname")) + "." + Lines(Values(test, L"@name"));
  const std::string result = Lines(Values(test, L"@result"));
  // Each failure of a test has a node of its own.
  const std::vector<std::string> failures = Values(test, L"failure/@message");
  if (!failures.empty()) {
    results.failed.push_back({name, Lines(failures)});
  } else if (result == "skipped") {
    results.skipped.push_back({name, Lines(Values(test, L"skipped/@message"))});
  } else if (result == "completed") {
    ++results.passed;
  }
}

}  // namespace

std::optional<TestResults> ReadTestXml(const std::string& xml) {
  // A test may print bytes that are no UTF-8. Decoded text has no declaration of its encoding.
  const std::wstring text = FromCodePage(CP_UTF8, xml, Strictness::kAnyBytes).value_or(L"");
  const size_t root = text.find(L"<testsuites");
  if (root == std::wstring::npos) return std::nullopt;
  ComPtr<IXMLDOMDocument2> document;
  Require(MakeXmlDocument(document));
  VARIANT_BOOL isRead = VARIANT_FALSE;
  Require(document->loadXML(Bstr(text.substr(root)).Get(), &isRead));
  if (isRead == VARIANT_FALSE) return std::nullopt;
  TestResults results;
  ForEachNode(*document.Get(), L"//testcase", [&](IXMLDOMNode& test) { AddTest(test, results); });
  return results;
}

TestResults PrintedResults(std::string_view output) {
  TestResults results;
  for (size_t begin = output.find(kRun); begin != std::string_view::npos;
       begin = output.find(kRun)) {
    output.remove_prefix(begin + kRun.size());
    const std::string_view part = output.substr(0, output.find(kRun));
    const std::string test(part.substr(0, part.find_first_of("\r\n")));
    const std::string_view text = part.substr(test.size());
    if (text.find(kPassed + test) != std::string_view::npos) {
      ++results.passed;
    } else if (const size_t failed = text.find(kFailed + test); failed != std::string_view::npos) {
      results.failed.push_back({test, std::string(text.substr(0, failed))});
    } else if (const size_t end = text.find(kSkipped + test); end != std::string_view::npos) {
      results.skipped.push_back({test, std::string(text.substr(0, end))});
    }
  }
  return results;
}

std::string UnfinishedTest(std::string_view output) {
  const size_t begin = output.rfind(kRun);
  if (begin == std::string_view::npos) return "";
  output.remove_prefix(begin + kRun.size());
  std::string test(output.substr(0, output.find_first_of("\r\n")));
  for (const char* const end : {kPassed, kFailed, kSkipped}) {
    if (output.find(end + test) != std::string_view::npos) return "";
  }
  return test;
}

}  // namespace tellurvane
