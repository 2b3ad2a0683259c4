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

// A name without its ampersand, a byte for each character and the last one lowest; 0 for none.
using EntityKey = std::uint64_t;
constexpr EntityKey KeyOf(std::wstring_view name) {
  EntityKey key = 0;
  for (const wchar_t unit : name.substr(1)) key = key << 8 | static_cast<unsigned char>(unit);
  return key;
}

struct KnownEntity {
  EntityKey key = 0;
  wchar_t character = 0;
  Step step = kFromText;
  bool isLast = false;  // the character comes too late to be a part of another entity or tag
};

// The one entity whose name ends without a semicolon.
inline constexpr std::wstring_view kEntityWithoutEnd = L"&hellip";
inline constexpr size_t kLongestEntity = 9;  // "&percent;"

// A power of two, some times the number of names: most of them stand alone.
inline constexpr size_t kEntitySlotBits = 9;
inline constexpr size_t kEntitySlots = size_t{1} << kEntitySlotBits;
// The highest bits of a product, on which all of the key's have a say.
constexpr size_t EntitySlotOf(EntityKey key) {
  constexpr EntityKey kMultiplier = 0x9E3779B97F4A7C15;
  return static_cast<size_t>(key * kMultiplier >> (64 - kEntitySlotBits));
}
// Open addressing; a key of 0 is an empty slot.
extern const std::array<KnownEntity, kEntitySlots> kEntitiesBySlot;

// By its whole name, the semicolon included; null where there is none of that name.
inline const KnownEntity* EntityOf(EntityKey key) {
  for (size_t slot = EntitySlotOf(key);; slot = (slot + 1) % kEntitySlots) {
    const KnownEntity& known = kEntitiesBySlot[slot];
    if (known.key == 0) return nullptr;
    if (known.key == key) return &known;
  }
}

// What a character is to entities, references and bold tags.
enum EntityKind : unsigned {
  kNoEntityPart = 0,
  kEntityPart = 1,    // one of them may hold it
  kEntityInside = 2,  // it stands between an ampersand and its semicolon
  kEntityMiddle = 4,  // none ends with it or begins with it
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
  add(kInside, kEntityPart | kEntityInside | kEntityMiddle);
  add("/", kEntityPart | kEntityMiddle);
  add("&;<>", kEntityPart);
  // The one letter that a name ends with: kEntityWithoutEnd's.
  kinds['p'] = kEntityPart | kEntityInside;
  return kinds;
}();
constexpr unsigned EntityKindOf(wchar_t unit) {
  const auto code = static_cast<char32_t>(unit);
  return code < kEntityKinds.size() ? kEntityKinds[code] : unsigned{kNoEntityPart};
}

}  // namespace tellurvane
