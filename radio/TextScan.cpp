#include "radio/TextScan.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <utility>

#include "base/Text.h"

namespace tellurvane {

bool IsMarkerAt(std::wstring_view text, size_t at, std::wstring_view marker) {
  if (text.size() - at < marker.size()) return false;
  for (size_t i = 0; i < marker.size(); ++i) {
    if (AsciiLowered(text[at + i]) != marker[i]) return false;
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

// What waits beside a text.
class Waiting {
 public:
  // It is not expected to become longer than that.
  explicit Waiting(size_t most) : most_(most) {}

  size_t size() const { return size_; }
  void Append(std::wstring_view piece) {
    MakeRoom(piece.size());
    piece.copy(text_.data() + size_, piece.size());
    size_ += piece.size();
  }
  void Append(const ShortText& few) {
    MakeRoom(few.units.size());
    std::memcpy(text_.data() + size_, few.units.data(), sizeof few.units);
    size_ += few.size;
  }
  void MoveTo(wchar_t* place) {
    text_.copy(place, size_);
    size_ = 0;
  }
  std::wstring Finish(std::wstring_view before) {
    text_.resize(size_);
    text_.insert(0, before);
    return std::move(text_);
  }

 private:
  // Room is made a piece at a time, while it is in the cache.
  static constexpr size_t kRoom = 4096;

  void MakeRoom(size_t size) {
    if (text_.size() - size_ < size) MakeMore(size);
  }
  [[gnu::noinline]] void MakeMore(size_t size) {
    // Whoever waits for so long will wait to the end: then the text is not copied again and again.
    if (text_.size() >= kRoom) text_.reserve(most_ + kRoom);
    text_.resize(size_ + std::max(size, kRoom));
  }

  std::wstring text_;
  size_t size_ = 0;
  size_t most_;
};

// A text of which the front is written anew, over what was read of it. Where more has been put in
// than was taken out so far, what finds no room yet waits beside the text. A marker stands in what
// was not read yet, all of it, so that whoever looks for one does not miss any by what was written.
class Rewritten {
 public:
  Rewritten(std::wstring text, size_t most)
      : text_(std::move(text)), end_(text_.data()), waiting_(most) {}

  std::wstring_view Text() const { return text_; }

  // Whether the marker is there. Inlined: on pages of nothing but markers the call took a third of
  // the time on the host.
  [[gnu::always_inline]] bool Try(size_t tell, const MarkerReplacement& marker) {
    const size_t begin = tell - marker.tell;
    if (tell < read_ + marker.tell || !IsExactlyAt(text_, begin, marker.marker)) return false;
    if (begin != read_) Keep(begin);
    read_ = begin + marker.marker.size();
    Put(marker.replacement);
    return true;
  }

  std::wstring Finish() {
    Keep(text_.size());
    const auto size = static_cast<size_t>(end_ - text_.data());
    if (waiting_.size() != 0) return waiting_.Finish(std::wstring_view(text_).substr(0, size));
    text_.resize(size);
    return std::move(text_);
  }

 private:
  size_t Room() const { return static_cast<size_t>(text_.data() + read_ - end_); }

  void Keep(size_t end) {
    const wchar_t* const from = text_.data() + read_;
    const size_t size = end - read_;
    read_ = end;
    if (waiting_.size() != 0) {
      Wait(std::wstring_view(from, size));
      return;
    }
    if (from != end_) std::char_traits<wchar_t>::move(end_, from, size);
    end_ += size;
  }

  void Put(const ShortText& few) {
    if (waiting_.size() != 0 || few.size > Room()) {
      Wait(few);
      return;
    }
    for (size_t i = 0; i < few.size; ++i) *end_++ = few.units[i];
  }

  template <typename Piece>
  void Wait(const Piece& piece) {
    waiting_.Append(piece);
    const size_t size = waiting_.size();
    if (size > Room()) return;
    waiting_.MoveTo(end_);
    end_ += size;
  }

  std::wstring text_;
  size_t read_ = 0;
  wchar_t* end_;  // of what is written so far
  Waiting waiting_;
};

// How long a text can become by a replacement.
size_t MostAfter(size_t size, const MarkerReplacement& marker) {
  const size_t before = marker.marker.size();
  const size_t after = std::max(marker.replacement.size, before);
  return size + size / before * (after - before);
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

std::wstring ReplacedMarkers(std::wstring text, const MarkerReplacement& first,
                             const MarkerReplacement& second) {
  const size_t most = std::max(MostAfter(text.size(), first), MostAfter(text.size(), second));
  Rewritten work(std::move(text), most);
  const auto isCandidate = [one = Tell(first.marker, first.tell),
                            two = Tell(second.marker, second.tell)](const wchar_t* at) {
    return one(at) | two(at);
  };
  ScanCandidates(work.Text(), 1, isCandidate, [&](size_t at) {
    if (!work.Try(at, first)) work.Try(at, second);
    return false;
  });
  return work.Finish();
}

std::wstring ReplacedMarker(std::wstring text, const MarkerReplacement& marker) {
  const size_t most = MostAfter(text.size(), marker);
  Rewritten work(std::move(text), most);
  ScanCandidates(work.Text(), 1, Tell(marker.marker, marker.tell), [&](size_t at) {
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
