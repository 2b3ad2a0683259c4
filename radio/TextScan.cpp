#include "radio/TextScan.h"

#include <algorithm>
#include <cassert>
#include <iterator>
#include <utility>

namespace tellurvane {

bool IsMarkerAt(std::wstring_view text, size_t at, std::wstring_view marker) {
  if (text.size() - at < marker.size()) return false;
  for (size_t i = 0; i < marker.size(); ++i) {
    if (Lowered(text[at + i]) != marker[i]) return false;
  }
  return true;
}

bool IsMarkerBefore(std::wstring_view text, size_t end, std::wstring_view marker) {
  return end >= marker.size() && IsMarkerAt(text, end - marker.size(), marker);
}

namespace {

// Finds the places of two of a marker's characters that follow each other.
class Tell {
 public:
  Tell(std::wstring_view marker, size_t tell) : last_(marker[tell]), before_(marker[tell - 1]) {}

  unsigned operator()(const wchar_t* at) const {
    return Bit(at[0] == last_) & Bit(at[-1] == before_);
  }

 private:
  wchar_t last_;
  wchar_t before_;
};

// The same in any case, and a few other characters too.
class RoughTell {
 public:
  RoughTell(std::wstring_view marker, size_t tell)
      : last_(RoughlyLowered(marker[tell])), before_(RoughlyLowered(marker[tell - 1])) {}

  unsigned operator()(const wchar_t* at) const {
    return Bit(RoughlyLowered(at[0]) == last_) & Bit(RoughlyLowered(at[-1]) == before_);
  }

 private:
  wchar_t last_;
  wchar_t before_;
};

bool IsExactlyAt(std::wstring_view text, size_t at, std::wstring_view marker) {
  if (text.size() - at < marker.size()) return false;
  for (size_t i = 0; i < marker.size(); ++i) {
    if (text[at + i] != marker[i]) return false;
  }
  return true;
}

// Writes a text of any length.
class NewText {
 public:
  explicit NewText(size_t expected) { text_.reserve(expected + kRoom); }

  // Of `from` so many characters can be read.
  void Append(const wchar_t* from, size_t size, size_t readable) {
    if (size <= kShort && readable >= kShort) {
      std::char_traits<wchar_t>::copy(MakeRoom(kShort), from, kShort);
      size_ += size;
      return;
    }
    for (size_t piece = 0; size != 0; size -= piece, from += piece) {
      piece = std::min(size, kRoom);
      std::char_traits<wchar_t>::copy(MakeRoom(piece), from, piece);
      size_ += piece;
    }
  }
  void Append(std::wstring_view few) {
    wchar_t* const to = MakeRoom(few.size());
    for (size_t i = 0; i < few.size(); ++i) to[i] = few[i];
    size_ += few.size();
  }

  std::wstring Finish() {
    text_.resize(size_);
    return std::move(text_);
  }

 private:
  // So many characters are copied at once where there are enough to read: that is quicker than to
  // copy as many as are wanted.
  static constexpr size_t kShort = 8;
  // Room is made a piece at a time, while it is in the cache.
  static constexpr size_t kRoom = 4096;

  wchar_t* MakeRoom(size_t size) {
    if (text_.size() - size_ < size) text_.resize(size_ + kRoom);
    return text_.data() + size_;
  }

  std::wstring text_;
  size_t size_ = 0;  // of what is written so far
};

// Writes over the very text that is read, which is never behind.
class SameText {
 public:
  explicit SameText(std::wstring& text) : text_(text), end_(text.data()) {}

  void Append(const wchar_t* from, size_t size, size_t /*readable*/) {
    if (from != end_) std::char_traits<wchar_t>::move(end_, from, size);
    end_ += size;
  }
  void Append(std::wstring_view few) {
    for (const wchar_t unit : few) *end_++ = unit;
  }

  std::wstring Finish() {
    text_.resize(static_cast<size_t>(end_ - text_.data()));
    return std::move(text_);
  }

 private:
  std::wstring& text_;
  wchar_t* end_;  // of what is written so far
};

// A text of which the front is written already.
template <typename Writer>
class Replacing {
 public:
  Replacing(std::wstring_view text, Writer writer) : text_(text), writer_(std::move(writer)) {}

  // Whether the marker is there.
  bool Try(size_t tell, const MarkerReplacement& marker) {
    const size_t begin = tell - marker.tell;
    if (tell < done_ + marker.tell || !IsExactlyAt(text_, begin, marker.marker)) return false;
    if (begin != done_) WriteUpTo(begin);
    writer_.Append(marker.replacement);
    done_ = begin + marker.marker.size();
    return true;
  }

  std::wstring Finish() {
    WriteUpTo(text_.size());
    return writer_.Finish();
  }

 private:
  void WriteUpTo(size_t end) {
    writer_.Append(text_.data() + done_, end - done_, text_.size() - done_);
  }

  std::wstring_view text_;
  Writer writer_;
  size_t done_ = 0;
};

template <typename Writer>
std::wstring Replaced(std::wstring_view text, Writer writer, const MarkerReplacement& first,
                      const MarkerReplacement& second) {
  Replacing<Writer> work(text, std::move(writer));
  const auto isCandidate = [one = Tell(first.marker, first.tell),
                            two = Tell(second.marker, second.tell)](const wchar_t* at) {
    return one(at) | two(at);
  };
  ScanCandidates(text, 1, isCandidate, [&](size_t at) {
    if (!work.Try(at, first)) work.Try(at, second);
    return false;
  });
  return work.Finish();
}

// By the marker's last two characters, which are rarer than its first one.
template <typename TellOf, typename IsThere>
size_t Find(std::wstring_view text, size_t from, std::wstring_view marker, IsThere isThere) {
  if (text.size() < marker.size() || from > text.size() - marker.size()) return kNotFound;
  const size_t tail = marker.size() - 1;
  const size_t end = ScanCandidates(text, from + tail, TellOf(marker, tail),
                                    [&](size_t at) { return isThere(at - tail); });
  return end == kNotFound ? kNotFound : end - tail;
}

}  // namespace

size_t FindMarker(std::wstring_view text, size_t from, std::wstring_view marker) {
  if (marker.size() == 1) return text.find(marker.front(), from);
  return Find<Tell>(text, from, marker, [&](size_t at) { return IsExactlyAt(text, at, marker); });
}

size_t FindMarkerAnyCase(std::wstring_view text, size_t from, std::wstring_view marker) {
  return Find<RoughTell>(text, from, marker,
                         [&](size_t at) { return IsMarkerAt(text, at, marker); });
}

std::wstring ReplacedMarkers(std::wstring_view text, const MarkerReplacement& first,
                             const MarkerReplacement& second) {
  return Replaced(text, NewText(text.size()), first, second);
}

std::wstring ShortenedMarkers(std::wstring text, const MarkerReplacement& first,
                              const MarkerReplacement& second) {
  assert(first.replacement.size() <= first.marker.size());
  assert(second.replacement.size() <= second.marker.size());
  return Replaced(text, SameText(text), first, second);
}

std::wstring ShortenedMarker(std::wstring text, const MarkerReplacement& marker) {
  assert(marker.replacement.size() <= marker.marker.size());
  Replacing<SameText> work(text, SameText(text));
  ScanCandidates(text, 1, Tell(marker.marker, marker.tell), [&](size_t at) {
    work.Try(at, marker);
    return false;
  });
  return work.Finish();
}

size_t Occurrences::From(size_t at) {
  // Most places lie behind all that is known.
  const auto after = known_.empty() || known_.back().from <= at
                         ? known_.end()
                         : std::ranges::upper_bound(known_, at, {}, &Known::from);
  if (after != known_.begin()) {
    const Known& before = *std::prev(after);
    if (at <= before.answer) return before.answer;
  }
  if (after == known_.end()) {
    const size_t found = Search(at, kNotFound);
    known_.push_back({at, found});
    return found;
  }
  // Only up to what is known already.
  const size_t found = Search(at, after->from);
  if (found == kNotFound) {
    after->from = at;
    return after->answer;
  }
  known_.insert(after, {at, found});
  return found;
}

// The first place in from..before, `before` not included.
size_t Occurrences::Search(size_t from, size_t before) const {
  if (from > text_.size()) return kNotFound;
  const size_t reach = before == kNotFound || text_.size() - before < marker_.size() - 1
                           ? text_.size()
                           : before + marker_.size() - 1;
  return find_(text_.substr(0, reach), from, marker_);
}

}  // namespace tellurvane
