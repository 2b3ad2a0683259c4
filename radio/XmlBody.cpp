#include "radio/XmlBody.h"

namespace tellurvane {

std::wstring_view XmlBody(std::wstring_view text) {
  constexpr std::wstring_view kDeclaration = L"<?xml";
  constexpr std::wstring_view kDeclarationEnd = L"?>";
  constexpr std::wstring_view kBlanks = L" \t\r\n";
  if (text.starts_with(L'\xFEFF')) text.remove_prefix(1);
  if (!text.starts_with(kDeclaration)) return text;
  // Another instruction may begin with the same letters, such as <?xml-stylesheet.
  const std::wstring_view rest = text.substr(kDeclaration.size());
  if (rest.empty() || kBlanks.find(rest.front()) == std::wstring_view::npos) return text;
  const size_t end = rest.find(kDeclarationEnd);
  return end == std::wstring_view::npos ? text : rest.substr(end + kDeclarationEnd.size());
}

}  // namespace tellurvane
