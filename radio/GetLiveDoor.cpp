#include "base/Text.h"
#include "radio/StationFields.h"
#include "radio/StationParsers.h"

namespace tellurvane {
namespace {

constexpr StationField kFields[] = {
    {L"button\"><a href=\"", L"\"", 500, &StationTexts::url},
    {L"細\">", L"<", 100, &StationTexts::name},
    {L"tool/kbps_", L".gif", 100, &StationTexts::bitRate},
    {L"tool/ch_", L".gif", 100, &StationTexts::channel},
    {L"tool/type_", L".gif", 100, &StationTexts::type},
    {L"listener\"><span>", L"<", 100, &StationTexts::listeners, false, true},
};

StationRow RowOf(const StationTexts& texts, const ToCapitals& toCapitals) {
  const bool isStereo = texts.channel == L"stereo";
  return {std::wstring(texts.name),
          toCapitals(texts.type),
          std::wstring(texts.bitRate) += isStereo ? L" kbps 雙聲道" : L" kbps 單聲道",
          std::wstring(texts.url),
          L"收聽人數：" + toCapitals(texts.listeners),
          L""};
}

}  // namespace

std::wstring PreparedLiveDoor(std::wstring_view page) {
  return Replaced(page, L"<span class=\"many\">", L"");
}

StationRows GetLiveDoor(std::wstring_view page, const ToCapitals& toCapitals) {
  const std::wstring named = Replaced(page, L"</a></li><li class=\"user\"><strong>DJ", L" DJ");
  return ScanStations(Replaced(named, L"</strong>", L""), kFields,
                      [toCapitals](const StationTexts& texts) { return RowOf(texts, toCapitals); });
}

}  // namespace tellurvane
