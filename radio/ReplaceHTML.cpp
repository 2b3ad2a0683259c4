#include "radio/ReplaceHTML.h"

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

#include "radio/AmpersandReader.h"
#include "radio/Entities.h"
#include "radio/EntityTable.h"
#include "radio/TextScan.h"

namespace tellurvane {
namespace {

constexpr std::wstring_view kEscape = L"&amp;";

// What the decoding begins with: an ampersand, or what may be the end of a bold tag.
constexpr auto kBegins = [](const wchar_t* at) {
  return Bit(at[0] == L'&') | (Bit(at[0] == L'>') & Bit(at[-1] == L'b'));
};

// The length of "<b" or "</b" before a place of a text; 0 where there is neither.
size_t BoldTagBefore(const wchar_t* text, const wchar_t* place) {
  const auto size = place - text;
  if (size < 2 || place[-1] != L'b') return 0;
  if (place[-2] == L'<') return 2;
  return size > 2 && place[-2] == L'/' && place[-3] == L'<' ? 3 : 0;
}

// The replacements come one after another, each over the whole text, and here they are all made in
// one go. What an entity, a reference or a tag is made of, it shares with no other one: it begins
// with the only "&" or "<" in it and ends with its last character. So it can be taken as soon as
// that one comes, if all of it was there when its turn came. That is noted for the characters of
// which it is not plain: in which step one came up, and in which step it moved up to the character
// before it.
//
// Whatever is replaced becomes shorter by three characters at least. So the decoded text is written
// over the text itself, and the few before a place at which something begins are still the text's.
class Decoder {
 public:
  explicit Decoder(std::wstring text) : text_(std::move(text)), end_(text_.data()) {}

  // All in one function: on pages of nothing but entities, calling these small steps took up to a
  // quarter of the time on the host.
  [[gnu::flatten]] std::wstring Decode() {
    size_t at = 0;
    while (at < text_.size()) at = isOpen_ ? TakeOpen(at) : TakePlain(at);
    text_.resize(Size());
    return std::move(text_);
  }

 private:
  // A decoded character that the text did not have there.
  struct Mark {
    std::uint32_t place = 0;
    Step born = kFromText;
    Step joined = kFromText;
  };

  // What is put instead of what was taken back; from the text where nothing was.
  struct Successor {
    wchar_t unit = 0;
    Step born = kFromText;
    bool isLast = false;  // nothing reaches beyond it
  };
  static Successor Referred(wchar_t unit) {
    return {unit, kReferences, EntityKindOf(unit) == kNoEntityPart};
  }

  // What the text has for a character; of no size where it has not.
  struct Whole {
    size_t size = 0;
    Successor successor = {};
  };

  static constexpr size_t kFirstMarks = 64;

  size_t Size() const { return static_cast<size_t>(end_ - text_.data()); }
  std::wstring_view Last(size_t length) const { return {end_ - length, length}; }

  void Keep(size_t at, size_t size) {
    const wchar_t* const from = text_.data() + at;
    if (from != end_) std::char_traits<wchar_t>::move(end_, from, size);
    end_ += size;
  }

  // Whether there is more than a look at a candidate to do.
  bool Begins(size_t at) {
    if (text_[at] != L'&') {
      return text_[at] == L'>' && BoldTagBefore(text_.data(), text_.data() + at) != 0;
    }
    // Most that are nothing are so at the first look.
    const wchar_t next = at + 1 < text_.size() ? text_[at + 1] : L'\0';
    if (next == L';' || EntityKindOf(next) == kNoEntityPart) return false;
    reading_ = ReadAmpersand(text_.data() + at);
    return reading_.found != Found::kNothing;
  }

  // While nothing has begun, all characters are the text's own and stand as they stood there. Each
  // of these takes what stands at a place and says where to go on.
  size_t TakePlain(size_t at) {
    const size_t next = Begins(at) ? at
                                   : ScanCandidates(text_, at + 1, kBegins,
                                                    [this](size_t place) { return Begins(place); });
    Keep(at, std::min(next, text_.size()) - at);
    if (next == kNotFound) return text_.size();
    if (text_[next] == L'&' && reading_.found == Found::kWhole &&
        EntityKindOf(reading_.character) == kNoEntityPart) {
      *end_++ = reading_.character;
      return next + reading_.size;
    }
    Open();
    return next;
  }

  size_t TakeOpen(size_t at) {
    const wchar_t* const text = text_.data();
    for (;;) {
      const wchar_t unit = text[at];
      const unsigned kind = EntityKindOf(unit);
      if (kind == kNoEntityPart) {
        // Nothing reaches beyond what is no part, as the text's own end is none.
        if (at == text_.size()) return at;
        *end_++ = unit;
        isOpen_ = false;
        return at + 1;
      }
      if ((kind & kEntityMiddle) != 0) {
        at = TakeMiddle(at);
      } else if (unit == L'&') {
        const Whole whole = WholeAt(at);
        if (whole.size != 0) Put(whole.successor);
        at = whole.size != 0 ? at + whole.size : TakeMiddle(at);
      } else if (unit == L'<') {
        at = TakeLessThan(at);
      } else {
        Put({unit});
        ++at;
      }
    }
  }

  size_t TakeMiddle(size_t at) {
    Push(text_[at], kFromText);
    const wchar_t* const text = text_.data();
    wchar_t* end = end_;
    // The text's own end is no middle.
    for (++at; IsMiddle(at); ++at) *end++ = text[at];
    end_ = end;
    return at;
  }

  // Whether the text goes on with it as it stands: nothing ends with it and it begins no tag, nor
  // what WholeAt looks for. The one "p" that something ends with comes after an "i".
  bool IsMiddle(size_t at) const {
    const wchar_t unit = text_[at];
    return (EntityKindOf(unit) & kEntityMiddle) != 0 || (unit == L'p' && text_[at - 1] != L'i') ||
           (unit == L'&' && !MayBeWhole(at));
  }

  // A first look at the three characters behind an ampersand.
  bool MayBeWhole(size_t at) const {
    const wchar_t* const text = text_.data() + at;
    if (text[1] == L'a') return text[2] == L'm' && text[3] == L'p';
    return text[1] == L'#' && IsDigit(text[2]) && (IsDigit(text[3]) || text[3] == L';');
  }

  // Whether an ampersand begins "&amp;" or a reference that stands in the text to its end: those
  // are the commonest, and that is quicker than to take them back.
  Whole WholeAt(size_t at) const {
    if (!MayBeWhole(at)) return {};
    const wchar_t* const text = text_.data() + at;
    if (text[1] == L'a') {
      return text[4] == L';' ? Whole{kEscape.size(), {L'&', kAmpersand}} : Whole{};
    }
    const Reading reference = ReadReference(text);
    return {reference.size, Referred(reference.character)};
  }

  size_t TakeLessThan(size_t at) {
    const wchar_t* const text = text_.data() + at;
    if (text[1] == L'b' && text[2] == L'>') return Skip(at + 3, kBoldBegins);
    if (text[1] == L'/' && text[2] == L'b' && text[3] == L'>') return Skip(at + 4, kBoldEnds);
    Push(L'<', kFromText);
    return at + 1;
  }

  // A tag that stands in the text from its beginning to its end.
  size_t Skip(size_t end, Step step) {
    joined_ = std::max(joined_, step);
    return end;
  }

  void Open() {
    isOpen_ = true;
    markCount_ = 0;
    joined_ = kFromText;
  }

  // One that entities or tags are made of.
  void Push(wchar_t unit, Step born) {
    if ((born | joined_) != kFromText) Note(born);
    *end_++ = unit;
  }

  void Note(Step born) {
    if (markCount_ == marks_.size()) marks_.resize(std::max(kFirstMarks, 2 * markCount_));
    Mark& mark = marks_[markCount_++];
    mark.place = static_cast<std::uint32_t>(Size());
    mark.born = born;
    mark.joined = joined_;
    joined_ = kFromText;
  }

  // What is no part, or comes too late to be one. Of a "<" it has to be known that it comes late.
  void PushLast(const Successor& last) {
    markCount_ = 0;
    if (last.unit == L'<') {
      Push(last.unit, last.born);
      return;
    }
    *end_++ = last.unit;
    joined_ = kFromText;
  }

  // And what comes of it.
  void Put(Successor next) {
    do {
      if (next.isLast) {
        PushLast(next);
        return;
      }
      Push(next.unit, next.born);
      if (next.unit == L';') {
        next = EndEntity();
      } else if (next.unit == L'p') {
        next = EndEllipsis();
      } else {
        if (next.unit == L'>') EndTag();
        return;
      }
    } while (next.born != kFromText);
  }

  // These take back what has come to its end, if anything has, and say what to put instead. No
  // reference comes to its end here: as the first of all replacements it takes only what stands so
  // in the text, and that has been taken at its ampersand.
  Successor EndEntity() {
    // From the semicolon back to the ampersand, as far as the longest name reaches.
    const size_t reach = std::min(Size(), kLongestEntity);
    const wchar_t* const last = end_ - 1;
    EntityKey key = L';';
    char32_t all = 0;
    // Unrolled: pages of nothing but entities take up to a twelfth less time on the host.
#pragma GCC unroll 8
    for (size_t i = 1; i < kLongestEntity; ++i) {
      if (i >= reach) return {};
      const wchar_t unit = *(last - i);
      if (unit == L'&') {
        // A key holds nothing but ASCII, and a NUL in front does not show in it.
        const bool isKey = all < kEntityKinds.size() && *(last - i + 1) != L'\0';
        return isKey ? EndKnown(i + 1, EntityOf(key)) : Successor{};
      }
      all |= static_cast<char32_t>(unit);
      key |= static_cast<EntityKey>(unit) << (8 * i) % 64;
    }
    return {};
  }

  Successor EndEllipsis() {
    constexpr size_t kLength = kEntityWithoutEnd.size();
    if (Size() < kLength || end_[-2] != L'i' || Last(kLength) != kEntityWithoutEnd) return {};
    return EndKnown(kLength, EntityOf(KeyOf(kEntityWithoutEnd)));
  }

  Successor EndKnown(size_t length, const KnownEntity* entity) {
    if (entity == nullptr || !TakeBack(length, entity->step)) return {};
    return {entity->character, entity->step, entity->isLast};
  }

  void EndTag() {
    const size_t before = BoldTagBefore(text_.data(), end_ - 1);
    if (before == 0) return;
    const Step step = before == 2 ? kBoldBegins : kBoldEnds;
    if (TakeBack(before + 1, step)) joined_ = std::max(joined_, step);
  }

  // Takes the last characters back if they stood together before a step: what comes next stands
  // where they stood.
  bool TakeBack(size_t length, Step step) {
    const size_t begin = Size() - length;
    size_t count = markCount_;
    Step joined = kFromText;
    for (; count > 0 && marks_[count - 1].place >= begin; --count) {
      const Mark& mark = marks_[count - 1];
      const bool isFirst = mark.place == begin;
      if (mark.born >= step || (!isFirst && mark.joined >= step)) return false;
      if (isFirst) joined = mark.joined;
    }
    markCount_ = count;
    joined_ = joined;
    end_ -= length;
    return true;
  }

  std::wstring text_;
  wchar_t* end_;     // of what is decoded so far
  Reading reading_;  // of the latest ampersand at which something begins
  // Whether an ampersand or a tag came and, since then, only what entities are made of.
  bool isOpen_ = false;
  // Since then, in the order of their places; behind the count there is room for more.
  std::vector<Mark> marks_;
  size_t markCount_ = 0;
  Step joined_ = kFromText;  // what the next character did
};

}  // namespace

std::wstring ReplaceHTML(std::wstring text) { return Decoder(std::move(text)).Decode(); }

}  // namespace tellurvane
