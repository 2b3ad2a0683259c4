#include "base/Text.h"
#include "radio/DirectoryHosts.h"
#include "radio/ReplaceHTML.h"
#include "radio/StationFields.h"
#include "radio/StationParsers.h"

namespace tellurvane {
namespace {

constexpr std::wstring_view kPlaylist = L".m3u";

constexpr StationField kFields[] = {
    {L"listeners\">[", L" ", 500, &StationTexts::listeners},
    {L"-description\">", L"<", 100, &StationTexts::name},
    {L"/listen/", kPlaylist, 100, &StationTexts::url, true},
    {L"format\" title=\"", L"\"", 20, &StationTexts::bitRate},
    {L"streams\">", L"<", 20, &StationTexts::type, false, true},
};

const wchar_t* TypeOf(std::wstring_view format) {
  if (EqualsIgnoringAsciiCase(format, L"ogg vorbis")) return L"OGG";
  return EqualsIgnoringAsciiCase(format, L"aac+") ? L"AAC+" : L"MP3";
}

bool WasFound(std::wstring_view text) { return text.data() != nullptr; }

std::wstring BitRateOf(std::wstring_view text) {
  const bool isUnknown = WasFound(text) && (text.empty() || text == L"0 kbps");
  return isUnknown ? kUnknownBitRate : std::wstring(text);
}

std::wstring UrlOf(std::wstring_view path) {
  if (!WasFound(path)) return {};
  return (std::wstring(kIcecastDirectory) += path) += kPlaylist;
}

StationRow RowOf(const StationTexts& texts) {
  return {std::wstring(texts.name),
          TypeOf(texts.type),
          BitRateOf(texts.bitRate),
          UrlOf(texts.url),
          std::wstring(L"收聽人數：") += texts.listeners,
          L""};
}

}  // namespace

StationRows GetIcecast(std::wstring_view page) {
  return ScanStations(ReplaceHTML(page), kFields, RowOf);
}

}  // namespace tellurvane
