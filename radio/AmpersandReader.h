// What begins with an ampersand, in a text that nothing has been replaced in yet.
#pragma once

#include <algorithm>
#include <string_view>

#include "radio/Entities.h"
#include "radio/EntityTable.h"

namespace tellurvane {

inline constexpr int kLargestValue = 255;
// A name is read so far at once; what is longer is decided when its end comes.
inline constexpr size_t kLongestRead = 16;

inline bool IsDigit(wchar_t unit) { return unit >= L'0' && unit <= L'9'; }

// The value of "&#65;", which begins and ends like one; -1 where it has no digits or no character.
inline int ValueOf(std::wstring_view reference) {
  if (reference.size() < 4) return -1;
  int value = 0;
  const size_t end = reference.size() - 1;
  for (size_t at = 2; at < end; ++at) {
    const wchar_t digit = reference[at];
    if (!IsDigit(digit)) return -1;
    value = value * 10 + (digit - L'0');
    if (value > kLargestValue) return -1;
  }
  return value;
}

inline EntityKey WithUnit(EntityKey key, wchar_t unit) {
  return key << 8 | static_cast<EntityKey>(unit);
}

inline bool IsInside(wchar_t unit) { return (EntityKindOf(unit) & kEntityInside) != 0; }

// What a text has at an ampersand.
enum class Reading {
  kNothing,    // and nothing reaches beyond what was read
  kWhole,      // what stands for a character
  kUndecided,  // what comes next may tell
};

// Reads an ampersand and what follows it.
class AmpersandReader {
 public:
  Reading Read(std::wstring_view rest) {
    const wchar_t* const text = rest.data();
    const size_t longest = std::min(rest.size(), kLongestRead);
    size_ = 1;
    size_t size = 1;
    EntityKey key = 0;
    for (; size < longest && IsInside(text[size]); ++size) key = WithUnit(key, text[size]);
    if (size >= kEntityWithoutEnd.size() && text[1] == L'h' &&
        rest.starts_with(kEntityWithoutEnd)) {
      return Become(EntityOf(KeyOf(kEntityWithoutEnd)), kEntityWithoutEnd.size());
    }
    size_ = size;
    if (size == longest) return Reading::kUndecided;
    const wchar_t next = text[size];
    if (next != L';' && EntityKindOf(next) != kNoEntityPart) return Reading::kUndecided;
    ++size_;
    if (next != L';') return Reading::kNothing;
    if (text[1] == L'#') return ReadReference(rest.substr(0, size_));
    return Become(size_ <= kLongestEntity ? EntityOf(WithUnit(key, next)) : nullptr, size_);
  }

  // How much was read.
  size_t size() const { return size_; }
  // Of what is whole.
  wchar_t character() const { return character_; }

 private:
  // "&#039;" is among the names too, but then its turn has come already.
  Reading ReadReference(std::wstring_view reference) {
    const int value = ValueOf(reference);
    if (value < 0) return Reading::kNothing;
    character_ = FromWindows1252(value);
    return Reading::kWhole;
  }

  Reading Become(const KnownEntity* entity, size_t size) {
    if (entity == nullptr) return Reading::kNothing;
    size_ = size;
    character_ = entity->character;
    return Reading::kWhole;
  }

  size_t size_ = 0;
  wchar_t character_ = 0;
};

}  // namespace tellurvane
