#include "radio/ReplaceHTML.h"

#include <algorithm>
#include <array>
#include <optional>

#include "radio/Entities.h"

namespace tellurvane {
namespace {

constexpr size_t kLongestName = 9;  // "&percent;"
constexpr int kLargestValue = 255;

// The values 128 to 159 of Windows-1252.
constexpr std::array<char16_t, 32> kUpperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

// A range of the list, by its places.
struct Stage {
  size_t first;
  size_t last;
};

// The list falls into stages inside which no replacement can make or break another: only "&num;",
// "&amp;" and "&semi;" give characters that names are made of, and what they complete stands in a
// later stage. So each stage is one pass over the text, whatever the number of its entities.
constexpr std::array<Stage, 4> kStages = {{{0, 5}, {6, 6}, {7, 19}, {20, kEntities.size() - 1}}};
static_assert(kEntities[3].name == L"&num;" && kEntities[6].name == L"&amp;" &&
              kEntities[8].name == L"&#039;" && kEntities[19].name == L"&semi;");

struct NamedPlace {
  std::wstring_view name;
  size_t place = 0;
};

constexpr auto kByName = [] {
  std::array<NamedPlace, kEntities.size()> sorted;
  for (size_t i = 0; i < sorted.size(); ++i) sorted[i] = {kEntities[i].name, i};
  std::ranges::sort(sorted, {}, &NamedPlace::name);
  return sorted;
}();

// Characters that entities, references and bold tags are made of. A run of them is decoded by
// itself: nothing reaches beyond it.
constexpr std::wstring_view kParts =
    L"&#;</>0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
constexpr size_t kAsciiSize = 128;
constexpr auto kIsPart = [] {
  std::array<bool, kAsciiSize> parts = {};
  for (const wchar_t part : kParts) parts.at(static_cast<unsigned>(part)) = true;
  return parts;
}();

bool IsPart(wchar_t unit) {
  const auto code = static_cast<unsigned>(unit);
  return code < kAsciiSize && kIsPart[code];
}

bool IsDigit(wchar_t unit) { return unit >= L'0' && unit <= L'9'; }

// A text that only shrinks: what was read is written back to its front.
class Shrinking {
 public:
  explicit Shrinking(std::wstring& text) : text_(text) {}

  bool IsDone() const { return read_ >= text_.size(); }
  std::wstring_view Rest() const { return std::wstring_view(text_).substr(read_); }
  void Keep() { text_[written_++] = text_[read_++]; }
  void Replace(size_t length, wchar_t by) {
    read_ += length;
    text_[written_++] = by;
  }
  void Drop(size_t length) { read_ += length; }
  void Finish() { text_.resize(written_); }

 private:
  std::wstring& text_;
  size_t read_ = 0;
  size_t written_ = 0;
};

// The length and the character of a reference at the front of a text.
struct Reference {
  size_t length = 0;
  wchar_t character = 0;
};
std::optional<Reference> ReferenceAt(std::wstring_view text) {
  size_t end = 2;
  int value = 0;
  while (end < text.size() && IsDigit(text[end])) {
    // Kept just above the largest value: a number may be as long as the page.
    value = std::min(value * 10 + (text[end] - L'0'), kLargestValue + 1);
    ++end;
  }
  if (end == 2 || value > kLargestValue || end >= text.size() || text[end] != L';') {
    return std::nullopt;
  }
  return Reference{end + 1, FromWindows1252(value)};
}

void DecodeReferences(std::wstring& text) {
  Shrinking work(text);
  while (!work.IsDone()) {
    const std::wstring_view rest = work.Rest();
    const auto reference = rest.starts_with(L"&#") ? ReferenceAt(rest) : std::nullopt;
    if (reference) {
      work.Replace(reference->length, reference->character);
    } else {
      work.Keep();
    }
  }
  work.Finish();
}

void RemoveAll(std::wstring& text, std::wstring_view part) {
  if (text.find(part) == std::wstring::npos) return;
  Shrinking work(text);
  while (!work.IsDone()) {
    if (work.Rest().starts_with(part)) {
      work.Drop(part.size());
    } else {
      work.Keep();
    }
  }
  work.Finish();
}

// The place in the list of the entity at the front of a text.
std::optional<size_t> EntityAt(std::wstring_view text) {
  constexpr std::wstring_view kWithoutEnd = L"&hellip";
  const size_t end = text.substr(0, kLongestName).find(L';');
  const std::wstring_view name = text.starts_with(kWithoutEnd)
                                     ? kWithoutEnd
                                     : text.substr(0, end == std::wstring_view::npos ? 0 : end + 1);
  if (name.empty()) return std::nullopt;
  const auto* const found = std::ranges::lower_bound(kByName, name, {}, &NamedPlace::name);
  if (found == kByName.end() || found->name != name) return std::nullopt;
  return found->place;
}

void ReplaceEntities(std::wstring& text, const Stage& stage) {
  if (text.find(L'&') == std::wstring::npos) return;
  Shrinking work(text);
  while (!work.IsDone()) {
    const std::wstring_view rest = work.Rest();
    const auto place = rest.front() == L'&' ? EntityAt(rest) : std::nullopt;
    if (place && *place >= stage.first && *place <= stage.last) {
      work.Replace(kEntities[*place].name.size(), FromWindows1252(kEntities[*place].value));
    } else {
      work.Keep();
    }
  }
  work.Finish();
}

void DecodeRun(std::wstring& run) {
  DecodeReferences(run);
  RemoveAll(run, L"<b>");
  RemoveAll(run, L"</b>");
  for (const Stage& stage : kStages) ReplaceEntities(run, stage);
}

// Whether a run that begins with a tag can be taken over as it stands.
bool IsPlain(std::wstring_view run) {
  return run.find(L'&') == std::wstring_view::npos && run.find(L"<b>") == std::wstring_view::npos &&
         run.find(L"</b>") == std::wstring_view::npos;
}

}  // namespace

wchar_t FromWindows1252(int value) {
  constexpr int kFirstUpper = 128;
  const bool isUpper =
      value >= kFirstUpper && value < kFirstUpper + static_cast<int>(kUpperControls.size());
  return static_cast<wchar_t>(isUpper ? kUpperControls[static_cast<size_t>(value - kFirstUpper)]
                                      : static_cast<char16_t>(value));
}

std::wstring ReplaceHTML(std::wstring_view text) {
  std::wstring decoded;
  decoded.reserve(text.size());
  std::wstring run;
  size_t at = 0;
  while (at < text.size()) {
    // What stands before the next entity or tag is nobody's.
    size_t begin = at;
    while (begin < text.size() && text[begin] != L'&' && text[begin] != L'<') ++begin;
    decoded += text.substr(at, begin - at);
    size_t end = begin;
    while (end < text.size() && IsPart(text[end])) ++end;
    const std::wstring_view part = text.substr(begin, end - begin);
    if (IsPlain(part)) {
      decoded += part;
    } else {
      run = part;
      DecodeRun(run);
      decoded += run;
    }
    at = end;
  }
  return decoded;
}

}  // namespace tellurvane
