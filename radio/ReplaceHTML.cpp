#include "radio/ReplaceHTML.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

#include "radio/Entities.h"
#include "radio/EntityTable.h"
#include "radio/TextScan.h"

namespace tellurvane {
namespace {

constexpr int kLargestValue = 255;
// So many characters are copied at once where fewer are wanted: that is quicker.
constexpr size_t kShort = 8;
// So much room is made at a time.
constexpr size_t kRoom = 4096;

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

// The value of "&#65;"; -1 where it is none, or has no digits or no character.
int ValueOf(std::wstring_view reference) {
  if (reference[1] != L'#' || reference.size() < 4) return -1;
  int value = 0;
  for (const wchar_t digit : reference.substr(2, reference.size() - 3)) {
    if (digit < L'0' || digit > L'9') return -1;
    // Kept just above the largest value: a number may be as long as the page.
    value = std::min(value * 10 + (digit - L'0'), kLargestValue + 1);
  }
  return value <= kLargestValue ? value : -1;
}

// The replacements come one after another, each over the whole text, and here they are all made in
// one go. What an entity, a reference or a tag is made of, it shares with no other one: it begins
// with the only "&" or "<" in it and ends with its last character. So it can be taken as soon as
// that one comes, if all of it was there when its turn came. That is noted for each character: in
// which step it came up, and in which step it moved up to the character before it.
class Decoder {
 public:
  explicit Decoder(std::wstring_view text) : text_(text) {}

  std::wstring Decode() {
    // The decoded text is never longer.
    decoded_.reserve(text_.size() + kRoom);
    end_ = decoded_.data();
    size_t at = 0;
    while (at < text_.size()) {
      if (!isOpen_ && text_[at] != L'&' && at > 0) {
        const size_t next =
            ScanCandidates(text_, at, kBegins, [this](size_t place) { return Begins(place); });
        Copy(text_.substr(at, next - at));
        if (next == kNotFound) break;
        at = next;
      }
      MakeRoom(kShort);
      const std::wstring_view rest = text_.substr(at);
      at += rest.front() == L'&' ? TakeAmpersand(rest) : Take(rest);
    }
    decoded_.resize(Size());
    return std::move(decoded_);
  }

 private:
  struct Mark {
    Step born = kFromText;
    Step joined = kFromText;
  };

  size_t Size() const { return static_cast<size_t>(end_ - decoded_.data()); }
  std::wstring_view Last(size_t length) const { return {end_ - length, length}; }

  // A piece at a time, while it is in the cache.
  void MakeRoom(size_t size) {
    if (decoded_.size() - Size() < size) decoded_.resize(Size() + kRoom);
  }

  void Copy(std::wstring_view plain) {
    while (!plain.empty()) {
      const std::wstring_view piece = plain.substr(0, kRoom);
      MakeRoom(piece.size());
      std::char_traits<wchar_t>::copy(end_, piece.data(), piece.size());
      end_ += piece.size();
      plain.remove_prefix(piece.size());
    }
  }

  // Whether there is more than a look at a candidate to do.
  bool Begins(size_t place) const {
    return text_[place] == L'&' || BoldTagBefore(text_.data(), text_.data() + place) != 0;
  }

  // Takes an ampersand and what follows it up to where that can be told. How much that is.
  size_t TakeAmpersand(std::wstring_view rest) {
    size_t length = 1;
    const size_t longest = std::min(rest.size(), kScanBlock);
    while (length < longest && (EntityKindOf(rest[length]) & kEntityInside) != 0) ++length;
    if (length > 1 && rest[1] == L'h' && rest.starts_with(kEntityWithoutEnd)) {
      const KnownEntity* const entity = EntityOf(kEntityWithoutEnd);
      return TakeWhole(entity->character, entity->step, kEntityWithoutEnd.size());
    }
    const unsigned kind = length < longest ? EntityKindOf(rest[length]) : unsigned{kEntityPart};
    const bool isWhole = length < longest && rest[length] == L';';
    if (isWhole) {
      const std::wstring_view name = rest.substr(0, length + 1);
      const int value = ValueOf(name);
      if (value >= 0) return TakeWhole(FromWindows1252(value), kReferences, name.size());
      const KnownEntity* const entity = EntityOf(name);
      if (entity != nullptr) return TakeWhole(entity->character, entity->step, name.size());
    }
    if (isWhole || kind == kNoEntityPart) {
      // It stays, and nothing reaches beyond it.
      Copy(rest.substr(0, length + 1));
      isOpen_ = false;
      return length + 1;
    }
    const bool isOneMore = length < longest && rest[length] == L'&';
    return TakeUndecided(rest.substr(0, isOneMore ? LastOfAmpersands(rest, length) : length));
  }

  // The last one of the ampersands, from a known one on, before anything that may end an entity.
  static size_t LastOfAmpersands(std::wstring_view rest, size_t last) {
    for (size_t at = last + 1; at < rest.size() && at - last < kScanBlock; ++at) {
      if (rest[at] == L'&') {
        last = at;
      } else if ((EntityKindOf(rest[at]) & kEntityInside) == 0 ||
                 (rest[at] == L'p' && rest[at - 1] == L'i')) {
        break;
      }
    }
    return last;
  }

  size_t TakeUndecided(std::wstring_view units) {
    if (!isOpen_) Open();
    PushFromText(units);
    return units.size();
  }

  // What stands in the text from its beginning to its end is replaced, whatever stands around it.
  size_t TakeWhole(wchar_t character, Step step, size_t length) {
    if (!isOpen_ && EntityKindOf(character) == kNoEntityPart) {
      *end_++ = character;
    } else {
      if (!isOpen_) Open();
      Put(character, step);
    }
    return length;
  }

  // Takes what is no ampersand. How much that is.
  size_t Take(std::wstring_view rest) {
    const wchar_t unit = rest.front();
    // While nothing has begun, all characters are the text's own and stand as they stood there.
    if (!isOpen_ && unit == L'>' && BoldTagBefore(decoded_.data(), end_) != 0) Open();
    const unsigned kind = EntityKindOf(unit);
    if (!isOpen_ || kind == kNoEntityPart) {
      // Nothing reaches beyond what is no part.
      *end_++ = unit;
      isOpen_ = false;
      return 1;
    }
    if (unit == L'<' && rest.size() > 3) {
      if (rest[1] == L'b' && rest[2] == L'>') return Skip(3, kBoldBegins);
      if (rest[1] == L'/' && rest[2] == L'b' && rest[3] == L'>') return Skip(4, kBoldEnds);
    }
    if ((kind & kEntityEnd) != 0 && IsEnd(unit, Size() == 0 ? L'\0' : end_[-1])) {
      Put(unit, kFromText);
      return 1;
    }
    size_t length = 1;
    while (length < rest.size() && IsMiddle(rest[length], rest[length - 1])) ++length;
    return TakeUndecided(rest.substr(0, length));
  }

  // A tag that stands in the text from its beginning to its end.
  size_t Skip(size_t length, Step step) {
    joined_ = std::max(joined_, step);
    return length;
  }

  // Of the one entity that ends with a "p", that comes after an "i".
  static bool IsEnd(wchar_t unit, wchar_t before) { return unit != L'p' || before == L'i'; }
  static bool IsMiddle(wchar_t unit, wchar_t before) {
    const unsigned kind = EntityKindOf(unit);
    return (kind & kEntityPart) != 0 && unit != L'&' && unit != L'<' &&
           ((kind & kEntityEnd) == 0 || !IsEnd(unit, before));
  }

  void Open() {
    isOpen_ = true;
    opened_ = Size();
    joined_ = kFromText;
  }

  void PushFromText(std::wstring_view units) {
    const size_t mark = Size() - opened_;
    MakeMarks(mark + std::max(units.size(), kShort));
    if (units.size() <= kShort && units.data() + kShort <= text_.data() + text_.size()) {
      MakeRoom(kShort);
      std::fill_n(&marks_[mark], kShort, Mark());
      std::char_traits<wchar_t>::copy(end_, units.data(), kShort);
      end_ += units.size();
    } else {
      std::fill_n(&marks_[mark], units.size(), Mark());
      Copy(units);
    }
    marks_[mark].joined = joined_;
    joined_ = kFromText;
  }

  void Push(wchar_t unit, Step born) {
    const size_t mark = Size() - opened_;
    MakeMarks(mark + 1);
    marks_[mark] = {born, joined_};
    joined_ = kFromText;
    *end_++ = unit;
  }

  void MakeMarks(size_t count) {
    if (count > marks_.size()) marks_.resize(std::max(count, 2 * marks_.size()));
  }

  void Put(wchar_t unit, Step born) {
    Push(unit, born);
    if (unit == L';') {
      EndEntity();
    } else if (unit == L'>') {
      EndTag();
    } else if (unit == L'p') {
      EndEllipsis();
    }
  }

  void EndEntity() {
    // From the semicolon back to the ampersand.
    const wchar_t* begin = end_ - 1;
    const wchar_t* const first = decoded_.data() + opened_;
    while (begin > first && (EntityKindOf(begin[-1]) & kEntityInside) != 0) --begin;
    if (begin == first || *--begin != L'&') return;
    const auto length = static_cast<size_t>(end_ - begin);
    const int value = ValueOf(Last(length));
    if (value >= 0 && WasThere(length, kReferences)) {
      TakeBack(length);
      Put(FromWindows1252(value), kReferences);
    } else {
      Replace(length, EntityOf(Last(length)));
    }
  }

  void EndEllipsis() {
    constexpr size_t kLength = kEntityWithoutEnd.size();
    if (Size() - opened_ < kLength || Last(kLength) != kEntityWithoutEnd) return;
    Replace(kLength, EntityOf(kEntityWithoutEnd));
  }

  void Replace(size_t length, const KnownEntity* entity) {
    if (entity == nullptr || !WasThere(length, entity->step)) return;
    TakeBack(length);
    Put(entity->character, entity->step);
  }

  void EndTag() {
    const size_t before = BoldTagBefore(decoded_.data(), end_ - 1);
    if (before != 0) Remove(before + 1, before == 2 ? kBoldBegins : kBoldEnds);
  }

  void Remove(size_t length, Step step) {
    if (!WasThere(length, step)) return;
    TakeBack(length);
    joined_ = std::max(joined_, step);
  }

  // Whether the last characters stood together before a step.
  bool WasThere(size_t length, Step step) const {
    const size_t end = Size() - opened_;
    // What was there before the first mark came from the text.
    for (size_t i = end - std::min(length, end); i < end; ++i) {
      const bool isFirst = i + length == end;
      if (marks_[i].born >= step || (!isFirst && marks_[i].joined >= step)) return false;
    }
    return true;
  }

  // What comes next stands where they stood.
  void TakeBack(size_t length) {
    end_ -= length;
    if (Size() < opened_) {
      opened_ = Size();
      joined_ = kFromText;
    } else {
      joined_ = marks_[Size() - opened_].joined;
    }
  }

  std::wstring_view text_;
  std::wstring decoded_;
  wchar_t* end_ = nullptr;  // of what is decoded so far
  // Whether an ampersand or a tag came and, since then, only what entities are made of. From
  // `opened_` on each decoded character has its mark.
  bool isOpen_ = false;
  size_t opened_ = 0;
  std::vector<Mark> marks_;
  Step joined_ = kFromText;
};

}  // namespace

std::wstring ReplaceHTML(std::wstring_view text) { return Decoder(text).Decode(); }

}  // namespace tellurvane
