// What begins with an ampersand, in a text that nothing has been replaced in yet and that ends with
// a NUL.
#pragma once

#include <cstdint>

#include "base/Text.h"
#include "radio/Entities.h"
#include "radio/EntityTable.h"

namespace tellurvane {

// What a text has at an ampersand.
enum class Found : std::uint8_t {
  kNothing,    // and nothing reaches beyond what was read
  kWhole,      // what stands for a character
  kUndecided,  // what comes next may tell
};
struct Reading {
  Found found = Found::kNothing;
  wchar_t character = 0;  // of what is whole
  size_t size = 0;        // of it
};

// "&#65;", with any number of zeros before its digits.
inline Reading ReadReference(const wchar_t* text) {
  constexpr int kLargestValue = 255;
  int value = 0;
  const wchar_t* at = text + 2;
  for (; IsDigit(*at); ++at) {
    value = value * 10 + (*at - L'0');
    if (value > kLargestValue) return {};
  }
  if (at == text + 2 || *at != L';') return {};
  return {Found::kWhole, FromWindows1252(value), static_cast<size_t>(at + 1 - text)};
}

inline Reading ReadNamed(EntityKey key, size_t size) {
  const KnownEntity* const entity = EntityOf(key);
  if (entity == nullptr) return {};
  return {Found::kWhole, entity->character, size};
}

inline Reading ReadAmpersand(const wchar_t* text) {
  // A name is read so far at once; what is longer is decided when its end comes.
  constexpr size_t kLongestRead = 16;
  if (text[1] == L'#') {
    if (const Reading reference = ReadReference(text); reference.size != 0) return reference;
  }
  size_t size = 1;
  EntityKey key = 0;
  for (; (EntityKindOf(text[size]) & kEntityInside) != 0; ++size) {
    if (size == kLongestRead) return {Found::kUndecided};
    key = key << 8 | static_cast<EntityKey>(text[size]);
    if (size + 1 == kEntityWithoutEnd.size() && key == KeyOf(kEntityWithoutEnd)) {
      return ReadNamed(key, size + 1);
    }
  }
  const wchar_t end = text[size++];
  if (end != L';') {
    return {EntityKindOf(end) == kNoEntityPart ? Found::kNothing : Found::kUndecided};
  }
  return size <= kLongestEntity ? ReadNamed(key << 8 | L';', size) : Reading();
}

}  // namespace tellurvane
