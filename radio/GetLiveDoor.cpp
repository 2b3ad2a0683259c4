#include <utility>

#include "base/LetterCase.h"
#include "radio/StationParsers.h"
#include "radio/TakeCut.h"
#include "radio/TextScan.h"

namespace tellurvane {
namespace {

constexpr std::wstring_view kUrl = L"button\"><a href=\"";
constexpr std::wstring_view kName = L"細\">";
constexpr std::wstring_view kBitRate = L"tool/kbps_";
constexpr std::wstring_view kChannel = L"tool/ch_";
constexpr std::wstring_view kType = L"tool/type_";
constexpr std::wstring_view kListeners = L"listener\"><span>";
constexpr std::wstring_view kImageEnd = L".gif";

constexpr size_t kUrlWindow = 500;
constexpr size_t kWindow = 100;

// Each marker has one place that gives it away: the end of a tag after "n", "r" or "細", or the
// slash after "tool". No marker shares a character with another one, so they come in the order of
// these places.
constexpr auto kIsTelling = [](const wchar_t* at) {
  const wchar_t before = RoughlyLowered(at[-2]);
  return (Bit(at[0] == L'>') & Bit(at[-1] == L'"') &
          (Bit(before == L'n') | Bit(before == L'r') | Bit(before == RoughlyLowered(L'細')))) |
         (Bit(at[0] == L'/') & Bit(RoughlyLowered(at[-1]) == L'l'));
};
constexpr size_t kBehind = 2;  // it looks at

// Goes over the page once and keeps the latest of each field.
class Scanner {
 public:
  explicit Scanner(StationRows& rows)
      : rows_(rows),
        text_(rows.Page()),
        quote_(text_, L"\""),
        tag_(text_, L"<"),
        image_(text_, kImageEnd) {}

  void Scan() {
    ScanCandidates(text_, kBehind, kIsTelling, [this](size_t at) {
      if (text_[at] == L'/') {
        LookAtImages(at);
      } else {
        LookAtTag(at);
      }
      return false;
    });
  }

 private:
  void LookAtTag(size_t at) {
    constexpr size_t kToTag = 7;       // of the address's marker, to the end of its first tag
    constexpr size_t kToCountTag = 9;  // of the listeners' marker
    if (IsMarkerBefore(text_, at + 1, kName)) {
      TakeCut(cuts_.name, tag_, at + 1, kWindow);
    } else if (at >= kToTag && IsMarkerAt(text_, at - kToTag, kUrl)) {
      TakeCut(cuts_.url, quote_, at - kToTag + kUrl.size(), kUrlWindow);
    } else if (at >= kToCountTag && IsMarkerAt(text_, at - kToCountTag, kListeners)) {
      if (TakeCut(cuts_.listeners, tag_, at - kToCountTag + kListeners.size(), kWindow)) {
        rows_.Append(cuts_);
      }
    }
  }

  void LookAtImages(size_t at) {
    constexpr size_t kLetters = 4;  // of "tool"
    if (at < kLetters) return;
    const size_t begin = at - kLetters;
    const std::pair<std::wstring_view, Cut*> markers[] = {
        {kBitRate, &cuts_.bitRate}, {kChannel, &cuts_.channel}, {kType, &cuts_.type}};
    for (const auto& [marker, field] : markers) {
      if (IsMarkerAt(text_, begin, marker)) TakeCut(*field, image_, begin + marker.size(), kWindow);
    }
  }

  StationRows& rows_;
  std::wstring_view text_;
  NextOccurrence quote_;
  NextOccurrence tag_;
  NextOccurrence image_;
  StationCuts cuts_;
};

StationRow RowOf(std::wstring_view page, const StationCuts& cuts) {
  const bool isStereo = cuts.channel.Of(page) == L"stereo";
  return {std::wstring(cuts.name.Of(page)),
          Capitals(cuts.type.Of(page)),
          std::wstring(cuts.bitRate.Of(page)) += isStereo ? L" kbps 雙聲道" : L" kbps 單聲道",
          std::wstring(cuts.url.Of(page)),
          std::wstring(L"收聽人數：") += Capitals(cuts.listeners.Of(page)),
          L""};
}

}  // namespace

std::wstring PreparedLiveDoor(std::wstring page) {
  constexpr std::wstring_view kMany = L"<span class=\"many\">";
  return ReplacedMarker(std::move(page), {kMany, L"", kMany.find(L'y')});
}

StationRows GetLiveDoor(std::wstring page) {
  constexpr std::wstring_view kUser = L"</a></li><li class=\"user\"><strong>DJ";
  constexpr std::wstring_view kEnd = L"</strong>";
  StationRows rows(ReplacedMarkers(std::move(page), {kUser, L" DJ", kUser.find(L'J')},
                                   {kEnd, L"", kEnd.find(L'>')}),
                   RowOf);
  Scanner(rows).Scan();
  return rows;
}

}  // namespace tellurvane
