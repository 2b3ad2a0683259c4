#include "radio/ReplaceHTML.h"

#include <algorithm>
#include <optional>

#include "base/Text.h"
#include "radio/Entities.h"

namespace tellurvane {
namespace {

constexpr size_t kNotFound = std::wstring_view::npos;

struct Reference {
  wchar_t character;
  size_t size;
};

// "&#65;", with any number of digits.
std::optional<Reference> ReferenceAt(std::wstring_view text, size_t at) {
  constexpr int kLargestValue = 255;
  const size_t begin = at + 2;
  size_t end = begin;
  int value = 0;
  for (; end < text.size() && IsDigit(text[end]); ++end) {
    value = std::min(value * 10 + (text[end] - L'0'), kLargestValue + 1);
  }
  const bool isComplete = end > begin && end < text.size() && text[end] == L';';
  if (!isComplete || value > kLargestValue) return std::nullopt;
  return Reference{FromWindows1252(value), end + 1 - at};
}

std::wstring ReferencesDecoded(std::wstring_view text) {
  std::wstring decoded;
  for (size_t at = 0; at < text.size();) {
    const size_t found = std::min(text.find(L"&#", at), text.size());
    decoded += text.substr(at, found - at);
    at = found;
    if (at == text.size()) break;
    if (const auto reference = ReferenceAt(text, at)) {
      decoded += reference->character;
      at += reference->size;
    } else {
      decoded += text[at++];
    }
  }
  return decoded;
}

// As text.find(name, from), but with two characters compared at once: on a page of ampersands every
// place begins like a name, and find() took ten times as long.
size_t FindName(std::wstring_view text, std::wstring_view name, size_t from) {
  for (size_t at = from; at + name.size() <= text.size(); ++at) {
    if (text[at] == name[0] && text[at + 1] == name[1] && text.substr(at).starts_with(name)) {
      return at;
    }
  }
  return kNotFound;
}

void Replace(std::wstring& text, std::wstring_view name, std::wstring_view replacement) {
  size_t found = FindName(text, name, 0);
  if (found == kNotFound) return;
  std::wstring replaced;
  size_t at = 0;
  for (; found != kNotFound; found = FindName(text, name, at)) {
    replaced.append(text, at, found - at) += replacement;
    at = found + name.size();
  }
  text = replaced.append(text, at);
}

std::wstring Decoded(std::wstring_view run) {
  std::wstring text = ReferencesDecoded(run);
  Replace(text, L"<b>", L"");
  Replace(text, L"</b>", L"");
  for (const Entity& entity : kEntities) {
    const wchar_t character = FromWindows1252(entity.value);
    Replace(text, entity.name, {&character, 1});
  }
  return text;
}

// Whether an entity, a reference or a bold tag can hold the character.
bool IsPart(wchar_t unit) {
  const wchar_t small = AsciiLowered(unit);
  return (small >= L'a' && small <= L'z') || IsDigit(unit) ||
         std::wstring_view(L"&#;</>").find(unit) != kNotFound;
}

bool NeedsDecoding(std::wstring_view run) {
  constexpr size_t kShortest = 3;  // "<b>"
  return run.size() >= kShortest && (run.find(L'&') != kNotFound || run.find(L"b>") != kNotFound);
}

}  // namespace

// No entity, reference or tag contains any other character. So each run of these characters is
// decoded alone, and the long list of entities is searched in few and short texts only.
std::wstring ReplaceHTML(std::wstring_view text) {
  std::wstring decoded;
  decoded.reserve(text.size());
  for (size_t at = 0; at < text.size(); ++at) {
    const size_t begin = at;
    while (at < text.size() && IsPart(text[at])) ++at;
    const std::wstring_view run = text.substr(begin, at - begin);
    if (NeedsDecoding(run)) {
      decoded += Decoded(run);
    } else {
      decoded += run;
    }
    if (at < text.size()) decoded += text[at];
  }
  return decoded;
}

}  // namespace tellurvane
