#include "radio/TextScan.h"

#include <algorithm>
#include <iterator>

namespace tellurvane {

std::wstring LoweredText(std::wstring_view text) {
  std::wstring lowered(text);
  std::ranges::transform(lowered, lowered.begin(), Lowered);
  return lowered;
}

std::wstring RaisedText(std::wstring_view text) {
  std::wstring raised(text);
  std::ranges::transform(raised, raised.begin(), [](wchar_t unit) {
    return unit >= L'a' && unit <= L'z' ? static_cast<wchar_t>(unit - L'a' + L'A') : unit;
  });
  return raised;
}

bool IsMarkerAt(std::wstring_view text, size_t at, std::wstring_view marker) {
  if (text.size() - at < marker.size()) return false;
  for (size_t i = 0; i < marker.size(); ++i) {
    if (Lowered(text[at + i]) != marker[i]) return false;
  }
  return true;
}

size_t Occurrences::From(size_t at) {
  const auto after = known_.upper_bound(at);
  if (after != known_.begin()) {
    const auto& [from, answer] = *std::prev(after);
    if (at <= answer) return answer;
  }
  // Only up to what is known already.
  const size_t before = after == known_.end() ? kNotFound : after->first;
  size_t found = Search(at, before);
  if (found == kNotFound && after != known_.end()) {
    found = after->second;
    known_.erase(after);
  }
  known_.emplace(at, found);
  return found;
}

// The first place in from..before, `before` not included.
size_t Occurrences::Search(size_t from, size_t before) const {
  if (from > text_.size()) return kNotFound;
  const size_t reach = before == kNotFound || text_.size() - before < marker_.size() - 1
                           ? text_.size()
                           : before + marker_.size() - 1;
  const std::wstring_view part = text_.substr(from, reach - from);
  if (!ignoresCase_) {
    const size_t found = part.find(marker_);
    return found == kNotFound ? kNotFound : from + found;
  }
  for (size_t at = 0; at + marker_.size() <= part.size(); ++at) {
    if (IsMarkerAt(part, at, marker_)) return from + at;
  }
  return kNotFound;
}

}  // namespace tellurvane
