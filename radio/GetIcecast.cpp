#include <utility>

#include "base/Text.h"
#include "radio/DirectoryHosts.h"
#include "radio/ReplaceHTML.h"
#include "radio/StationParsers.h"
#include "radio/TakeCut.h"
#include "radio/TextScan.h"

namespace tellurvane {
namespace {

constexpr std::wstring_view kListeners = L"listeners\">[";
constexpr std::wstring_view kName = L"-description\">";
constexpr std::wstring_view kUrl = L"/listen/";
constexpr std::wstring_view kUrlEnd = L".m3u";
constexpr std::wstring_view kBitRate = L"format\" title=\"";
constexpr std::wstring_view kFormat = L"streams\">";

// How far behind a field's beginning its end may be.
constexpr size_t kListenersWindow = 500;
constexpr size_t kTextWindow = 100;
constexpr size_t kShortWindow = 20;

// Each marker has one place that gives it away: the end of a tag after "s" or "n", the slash after
// "listen", the quote after "format". No marker shares a character with another one, so they come
// in the order of these places.
constexpr auto kIsTelling = [](const wchar_t* at) {
  const wchar_t before = RoughlyLowered(at[-2]);
  return (Bit(at[0] == L'>') & Bit(at[-1] == L'"') & (Bit(before == L's') | Bit(before == L'n'))) |
         (Bit(at[0] == L'/') & Bit(RoughlyLowered(at[-1]) == L'n')) |
         (Bit(at[0] == L'"') & Bit(RoughlyLowered(at[-1]) == L't'));
};
constexpr size_t kBehind = 2;  // it looks at

// Goes over the page once and keeps the latest of each field.
class Scanner {
 public:
  explicit Scanner(StationRows& rows)
      : rows_(rows),
        text_(rows.Page()),
        blank_(text_, L" "),
        tag_(text_, L"<"),
        m3u_(text_, kUrlEnd),
        quote_(text_, L"\"") {}

  void Scan() {
    ScanCandidates(text_, kBehind, kIsTelling, [this](size_t at) {
      Look(at);
      return false;
    });
  }

 private:
  void Look(size_t at) {
    switch (text_[at]) {
      case L'/':
        if (IsMarkerBefore(text_, at + 1, kUrl)) TakeUrl(at + 1 - kUrl.size());
        break;
      case L'"':
        LookAtBitRate(at);
        break;
      default:
        LookAtTag(at);
        break;
    }
  }

  void LookAtBitRate(size_t at) {
    constexpr size_t kLetters = 6;  // of "format"
    if (at < kLetters || !IsMarkerAt(text_, at - kLetters, kBitRate)) return;
    TakeCut(cuts_.bitRate, quote_, at - kLetters + kBitRate.size(), kShortWindow);
  }

  void LookAtTag(size_t at) {
    const size_t end = at + 1;
    if (IsMarkerBefore(text_, end, kName)) {
      TakeCut(cuts_.name, tag_, end, kTextWindow);
    } else if (IsMarkerBefore(text_, end, kFormat)) {
      if (TakeCut(cuts_.type, tag_, end, kShortWindow)) rows_.Append(cuts_);
    } else if (end < text_.size() && IsMarkerBefore(text_, end + 1, kListeners)) {
      TakeCut(cuts_.listeners, blank_, end + 1, kListenersWindow);
    }
  }

  void TakeUrl(size_t start) {
    const size_t end = m3u_.Within(start, kTextWindow);
    if (end != kNotFound) cuts_.url = Cut(start, end + kUrlEnd.size() - start);
  }

  StationRows& rows_;
  std::wstring_view text_;
  NextOccurrence blank_;
  NextOccurrence tag_;
  NextOccurrence m3u_;
  NextOccurrence quote_;
  StationCuts cuts_;
};

const wchar_t* TypeOf(std::wstring_view format) {
  if (EqualsIgnoringAsciiCase(format, L"ogg vorbis")) return L"OGG";
  return EqualsIgnoringAsciiCase(format, L"aac+") ? L"AAC+" : L"MP3";
}

std::wstring BitRateOf(std::wstring_view page, const Cut& cut) {
  const std::wstring_view text = cut.Of(page);
  const bool isUnknown = cut.IsMade() && (text.empty() || text == L"0 kbps");
  return isUnknown ? L"未知" : std::wstring(text);
}

StationRow RowOf(std::wstring_view page, const StationCuts& cuts) {
  return {
      std::wstring(cuts.name.Of(page)),
      TypeOf(cuts.type.Of(page)),
      BitRateOf(page, cuts.bitRate),
      cuts.url.IsMade() ? std::wstring(kIcecastDirectory) += TrimBlanks(cuts.url.Of(page)) : L"",
      std::wstring(L"收聽人數：") += cuts.listeners.Of(page),
      L""};
}

}  // namespace

StationRows GetIcecast(std::wstring page) {
  StationRows rows(ReplaceHTML(std::move(page)), RowOf);
  Scanner(rows).Scan();
  return rows;
}

}  // namespace tellurvane
