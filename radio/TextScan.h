// Searching a page without ever going over the same place twice.
#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace tellurvane {

inline constexpr size_t kNotFound = std::wstring_view::npos;

// Small ASCII letters for capitals, and other characters too are changed: for a first, quick look.
constexpr wchar_t RoughlyLowered(wchar_t unit) { return static_cast<wchar_t>(unit | 0x20); }

// Whether the text at a place is the marker, which is written small, whatever its letters' case.
// For markers, which are ASCII, AsciiLowered is the platform's lower case: that gives no ASCII
// letter for anything else.
bool IsMarkerAt(std::wstring_view text, size_t at, std::wstring_view marker);
// Whether a marker of that form ends just before a place.
bool IsMarkerBefore(std::wstring_view text, size_t end, std::wstring_view marker);

// 1 or 0, for conditions that are joined without a branch.
constexpr unsigned Bit(bool condition) { return static_cast<unsigned>(condition); }

// So many characters are looked at together.
inline constexpr size_t kScanBlock = 16;
// So many before they are looked at they are asked for.
inline constexpr size_t kScanAhead = 512;

// Calls look(i) for each place i in from..text.size() where isCandidate(pointer to the place) is 1
// until it answers true, and returns that place; kNotFound when none does. isCandidate may look at
// so many characters before its place as `from` leaves it, and has to do without a branch: then the
// compiler makes a few vector instructions of a whole block.
template <typename IsCandidate, typename Look>
size_t ScanCandidates(std::wstring_view text, size_t from, IsCandidate isCandidate, Look look) {
  const wchar_t* const data = text.data();
  size_t at = from;
  for (; at < text.size() && text.size() - at >= kScanBlock; at += kScanBlock) {
    // Those of the next pages of memory, which the processor does not fetch by itself.
    __builtin_prefetch(data + at + kScanAhead);
    // Two whole words, so that a byte of theirs says of each place whether it is one.
    std::array<unsigned char, kScanBlock> candidates;
    for (size_t i = 0; i < kScanBlock; ++i) {
      candidates[i] = static_cast<unsigned char>(isCandidate(data + at + i));
    }
    for (size_t word = 0; word < kScanBlock; word += sizeof(std::uint64_t)) {
      std::uint64_t bits = 0;
      std::memcpy(&bits, candidates.data() + word, sizeof bits);
      for (; bits != 0; bits &= bits - 1) {
        const size_t place = at + word + static_cast<size_t>(std::countr_zero(bits)) / 8;
        if (look(place)) return place;
      }
    }
  }
  for (; at < text.size(); ++at) {
    if (isCandidate(data + at) != 0 && look(at)) return at;
  }
  return kNotFound;
}

// The first place at or after `from` where the marker begins.
size_t FindMarker(std::wstring_view text, size_t from, std::wstring_view marker);
// The same whatever the letters' case; the marker is written small.
size_t FindMarkerAnyCase(std::wstring_view text, size_t from, std::wstring_view marker);

// So few characters that to copy the whole room costs less than to count them.
struct ShortText {
  // Implicit: it is a literal. One that is too long does not compile.
  // not covered: only the compiler calls it
  consteval ShortText(const wchar_t* text) {
    for (; text[size] != L'\0'; ++size) units.at(size) = text[size];
  }

  std::array<wchar_t, 8> units = {};
  size_t size = 0;
};

// What stands for a marker. It is looked for by its characters `tell` - 1 and `tell`, which should
// be rare ones; the first one, 0, is no `tell`.
struct MarkerReplacement {
  std::wstring_view marker;
  ShortText replacement;
  size_t tell;
};
// As Replaced of base/Text.h, and for two markers the first and, after that, the second, all in one
// go: for markers that none of the replacements makes or breaks. Where the two overlap, the first
// one's `tell` has to come first. There is hardly another text beside the page, unless the page
// grows.
std::wstring ReplacedMarkers(std::wstring text, const MarkerReplacement& first,
                             const MarkerReplacement& second);
std::wstring ReplacedMarker(std::wstring text, const MarkerReplacement& marker);

// Answers where a marker begins at or after a place, in any order of places, and remembers what it
// went over: all answers together cost one pass over the text.
class Occurrences {
 public:
  using Find = size_t (*)(std::wstring_view text, size_t from, std::wstring_view marker);

  Occurrences(std::wstring_view text, std::wstring_view marker, Find find = FindMarker)
      : text_(text), marker_(marker), find_(find) {}

  size_t From(size_t at);

 private:
  size_t Search(size_t from, size_t before) const;

  std::wstring_view text_;
  std::wstring_view marker_;
  Find find_;
  // In the order of their places. From `from` up to the answer, that included, this is the answer.
  struct Known {
    size_t from;
    size_t answer;
  };
  std::vector<Known> known_;
};

// The same for places that only ever grow. Costs less.
class NextOccurrence {
 public:
  NextOccurrence(std::wstring_view text, std::wstring_view marker) : text_(text), marker_(marker) {}

  // kNotFound where it begins more than `window` characters behind the place.
  size_t Within(size_t at, size_t window) {
    if (next_ != kNotFound && (!isKnown_ || next_ < at)) {
      next_ = FindMarker(text_, at, marker_);
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
