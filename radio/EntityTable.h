// The named entities by name, and the order of all that decoding does.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace tellurvane {

// What a character of the decoded text comes from: the text itself, or the step that put it there.
//
// The list of entities falls into groups inside which no replacement can make or break another:
// only "&num;", "&amp;" and "&semi;" give characters that names are made of, and what they complete
// stands in a later group.
enum Step : std::uint8_t {
  kFromText,
  kReferences,
  kBoldBegins,
  kBoldEnds,
  kNamesBeforeAmpersand,
  kAmpersand,
  kNamesUpToSemicolon,
  kNamesAfterSemicolon,
};

struct KnownEntity {
  std::wstring_view name;
  wchar_t character = 0;
  Step step = kFromText;
};

// The one entity whose name ends without a semicolon.
inline constexpr std::wstring_view kEntityWithoutEnd = L"&hellip";
inline constexpr size_t kLongestEntity = 9;  // "&percent;"

// By its whole name, ampersand and semicolon included; null where there is none of that name.
const KnownEntity* EntityOf(std::wstring_view name);

// What a character is to entities, references and bold tags.
enum EntityKind : unsigned {
  kNoEntityPart = 0,
  kEntityPart = 1,    // one of them may hold it
  kEntityInside = 2,  // it stands between an ampersand and its semicolon
  kEntityEnd = 4,     // one of them may end with it
};
inline constexpr auto kEntityKinds = [] {
  std::array<std::uint8_t, 128> kinds = {};
  const auto add = [&kinds](std::string_view characters, unsigned kind) {
    for (const char character : characters) {
      std::uint8_t& known = kinds.at(static_cast<size_t>(character));
      known = static_cast<std::uint8_t>(known | kind);
    }
  };
  constexpr std::string_view kInside =
      "#0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
  add(kInside, kEntityPart | kEntityInside);
  add("&;</>", kEntityPart);
  add(";>p", kEntityEnd);
  return kinds;
}();
inline unsigned EntityKindOf(wchar_t unit) {
  const auto code = static_cast<char32_t>(unit);
  return code < kEntityKinds.size() ? kEntityKinds[code] : unsigned{kNoEntityPart};
}

}  // namespace tellurvane
