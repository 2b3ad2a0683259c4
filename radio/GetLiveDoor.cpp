#include <utility>

#include "base/Text.h"
#include "radio/StationParsers.h"
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

// Goes over the page once and keeps the latest of each field.
class Scanner {
 public:
  explicit Scanner(std::wstring_view text)
      : text_(text), quote_(text, L"\""), tag_(text, L"<"), image_(text, kImageEnd) {}

  StationRows Scan() {
    for (size_t at = 0; at < text_.size(); ++at) Look(at);
    return std::move(rows_);
  }

 private:
  void Look(size_t at) {
    switch (text_[at]) {
      case L'b':
      case L'B':
        if (IsMarkerAt(text_, at, kUrl)) Take(url_, quote_, at + kUrl.size(), kUrlWindow);
        break;
      case L'細':
        if (IsMarkerAt(text_, at, kName)) Take(name_, tag_, at + kName.size(), kWindow);
        break;
      case L't':
      case L'T':
        LookAtImages(at);
        break;
      case L'l':
      case L'L':
        if (IsMarkerAt(text_, at, kListeners)) TakeListeners(at + kListeners.size());
        break;
      default:
        break;
    }
  }

  void LookAtImages(size_t at) {
    if (IsMarkerAt(text_, at, kBitRate)) Take(bitRate_, image_, at + kBitRate.size(), kWindow);
    if (IsMarkerAt(text_, at, kChannel)) Take(channel_, image_, at + kChannel.size(), kWindow);
    if (!IsMarkerAt(text_, at, kType)) return;
    std::wstring type;
    if (Take(type, image_, at + kType.size(), kWindow)) type_ = RaisedText(type);
  }

  bool Take(std::wstring& field, NextOccurrence& mark, size_t start, size_t window) const {
    const size_t end = mark.Within(start, window);
    if (end == kNotFound) return false;
    field = text_.substr(start, end - start);
    return true;
  }

  void TakeListeners(size_t start) {
    std::wstring listeners;
    if (!Take(listeners, tag_, start, kWindow)) return;
    const std::wstring channel = channel_ == L"stereo" ? L"雙聲道" : L"單聲道";
    rows_.push_back({name_, type_, bitRate_ + L" kbps " + channel, url_,
                     L"收聽人數：" + RaisedText(listeners), L""});
  }

  std::wstring_view text_;
  NextOccurrence quote_;
  NextOccurrence tag_;
  NextOccurrence image_;
  std::wstring url_;
  std::wstring name_;
  std::wstring bitRate_;
  std::wstring channel_;
  std::wstring type_;
  StationRows rows_;
};

}  // namespace

std::wstring PreparedLiveDoor(std::wstring_view page) {
  return Replaced(page, L"<span class=\"many\">", L"");
}

StationRows GetLiveDoor(std::wstring_view page) {
  const std::wstring text = Replaced(
      Replaced(page, L"</a></li><li class=\"user\"><strong>DJ", L" DJ"), L"</strong>", L"");
  return Scanner(text).Scan();
}

}  // namespace tellurvane
