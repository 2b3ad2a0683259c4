// Searching a page without ever going over the same place twice.
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace tellurvane {

inline constexpr size_t kNotFound = std::wstring_view::npos;

// Small ASCII letters for capitals; everything else as it is.
constexpr wchar_t Lowered(wchar_t unit) {
  return unit >= L'A' && unit <= L'Z' ? static_cast<wchar_t>(unit - L'A' + L'a') : unit;
}
std::wstring LoweredText(std::wstring_view text);
std::wstring RaisedText(std::wstring_view text);

// Whether the text at a place is the marker, which is written small, whatever its letters' case.
bool IsMarkerAt(std::wstring_view text, size_t at, std::wstring_view marker);

// Answers where a marker begins at or after a place, in any order of places, and remembers what it
// went over: all answers together cost one pass over the text.
class Occurrences {
 public:
  Occurrences(std::wstring_view text, std::wstring_view marker, bool ignoresCase = false)
      : text_(text), marker_(marker), ignoresCase_(ignoresCase) {}

  size_t From(size_t at);

 private:
  size_t Search(size_t from, size_t before) const;

  std::wstring_view text_;
  std::wstring_view marker_;
  bool ignoresCase_;
  // From the key up to its value, that included, the answer is the value.
  std::map<size_t, size_t> known_;
};

// The same for places that only ever grow. Costs less.
class NextOccurrence {
 public:
  NextOccurrence(std::wstring_view text, std::wstring_view marker) : text_(text), marker_(marker) {}

  // kNotFound where it begins more than `window` characters behind the place.
  size_t Within(size_t at, size_t window) {
    if (next_ != kNotFound && (!isKnown_ || next_ < at)) {
      next_ = text_.find(marker_, at);
      isKnown_ = true;
    }
    return next_ != kNotFound && next_ - at <= window ? next_ : kNotFound;
  }

 private:
  std::wstring_view text_;
  std::wstring_view marker_;
  size_t next_ = 0;
  bool isKnown_ = false;
};

}  // namespace tellurvane
