#include "base/Text.h"
#include "radio/DirectoryHosts.h"
#include "radio/ReplaceHTML.h"
#include "radio/StationParsers.h"
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

std::wstring TypeOf(std::wstring_view format) {
  if (EqualsIgnoringAsciiCase(format, L"ogg vorbis")) return L"OGG";
  return EqualsIgnoringAsciiCase(format, L"aac+") ? L"AAC+" : L"MP3";
}

// Goes over the page once and keeps the latest of each field.
class Scanner {
 public:
  explicit Scanner(std::wstring_view text)
      : text_(text),
        blank_(text, L" "),
        tag_(text, L"<"),
        m3u_(text, kUrlEnd),
        quote_(text, L"\"") {}

  StationRows Scan() {
    for (size_t at = 0; at < text_.size(); ++at) Look(at);
    return std::move(rows_);
  }

 private:
  // No two markers begin with the same letter.
  void Look(size_t at) {
    switch (text_[at]) {
      case L'l':
      case L'L':
        if (IsMarkerAt(text_, at, kListeners)) TakeListeners(at + kListeners.size());
        break;
      case L'-':
        if (IsMarkerAt(text_, at, kName)) TakeName(at + kName.size());
        break;
      case L'/':
        if (IsMarkerAt(text_, at, kUrl)) TakeUrl(at);
        break;
      case L'f':
      case L'F':
        if (IsMarkerAt(text_, at, kBitRate)) TakeBitRate(at + kBitRate.size());
        break;
      case L's':
      case L'S':
        if (IsMarkerAt(text_, at, kFormat)) TakeFormat(at + kFormat.size());
        break;
      default:
        break;
    }
  }

  void TakeListeners(size_t start) {
    const size_t end = blank_.Within(start, kListenersWindow);
    if (end != kNotFound) listeners_ = text_.substr(start, end - start);
  }

  void TakeName(size_t start) {
    const size_t end = tag_.Within(start, kTextWindow);
    if (end != kNotFound) name_ = text_.substr(start, end - start);
  }

  void TakeUrl(size_t start) {
    const size_t end = m3u_.Within(start, kTextWindow);
    if (end == kNotFound) return;
    url_ = kIcecastDirectory;
    url_ += TrimBlanks(text_.substr(start, end + kUrlEnd.size() - start));
  }

  void TakeBitRate(size_t start) {
    const size_t end = quote_.Within(start, kShortWindow);
    if (end == kNotFound) return;
    bitRate_ = text_.substr(start, end - start);
    if (bitRate_.empty() || bitRate_ == L"0 kbps") bitRate_ = L"未知";
  }

  void TakeFormat(size_t start) {
    const size_t end = tag_.Within(start, kShortWindow);
    if (end == kNotFound) return;
    rows_.push_back({name_, TypeOf(text_.substr(start, end - start)), bitRate_, url_,
                     L"收聽人數：" + listeners_, L""});
  }

  std::wstring_view text_;
  NextOccurrence blank_;
  NextOccurrence tag_;
  NextOccurrence m3u_;
  NextOccurrence quote_;
  std::wstring name_;
  std::wstring listeners_;
  std::wstring url_;
  std::wstring bitRate_;
  StationRows rows_;
};

}  // namespace

StationRows GetIcecast(std::wstring_view page) {
  const std::wstring text = ReplaceHTML(page);
  return Scanner(text).Scan();
}

}  // namespace tellurvane
