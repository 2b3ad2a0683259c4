#include "radio/DirectorySearch.h"

#include "radio/DirectoryHosts.h"

namespace tellurvane {

const std::array<Genre, 28> kGenres = {{{L"Top 精選 (Top Streams)", L"top"},
                                        {L"另類音樂 (Alternative)", L"alternative"},
                                        {L"古典音樂 (Classical)", L"classical"},
                                        {L"當代音樂 (Contemporary)", L"contemporary"},
                                        {L"喜劇音樂 (Comedy)", L"comedy"},
                                        {L"鄉村音樂 (Country)", L"country"},
                                        {L"心靈音樂 (Spiritual)", L"spiritual"},
                                        {L"新世紀音樂 (New Age)", L"new age"},
                                        {L"懷舊音樂 (Oldies)", L"oldies"},
                                        {L"日本音樂 (Japan)", L"jpop"},
                                        {L"舞曲音樂 (Dance/House)", L"dance"},
                                        {L"斯卡音樂 (Ska)", L"ska"},
                                        {L"瘋克音樂 (Funk)", L"funk"},
                                        {L"爵士音樂 (Jazz)", L"jazz"},
                                        {L"重金屬音樂 (Metal)", L"metal"},
                                        {L"混合音樂 (Mixed)", L"mixed"},
                                        {L"饒舌音樂 (Rap)", L"rap"},
                                        {L"流行音樂 (Pop)", L"pop"},
                                        {L"節奏藍調 (R&B)", L"R&B"},
                                        {L"搖滾音樂 (Rock)", L"rock"},
                                        {L"說唱音樂 (Talk)", L"talk"},
                                        {L"數位音樂 (Techno)", L"techno"},
                                        {L"拉丁音樂 (Latin)", L"latin"},
                                        {L"70 年代音樂 (The '70s)", L"70s"},
                                        {L"80 年代音樂 (The '80s)", L"80s"},
                                        {L"90 年代音樂 (The '90s)", L"90s"},
                                        {L"國家音樂 (World)", L"world"},
                                        {L"遊戲音樂 (Game)", L"game"}}};

StationSearch SearchDirectory(const DirectoryQuery& query, const DirectoryCallbacks& callbacks) {
  const auto fetch = [&callbacks](const wchar_t* directory, const std::wstring& path) {
    return callbacks.fetch(directory + path);
  };
  switch (query.source) {
    case DirectorySource::kShoutcast: {
      const wchar_t* const type =
          query.mode == SearchMode::kGenre ? L"GENRE_SEARCH" : L"KEYWORD_SEARCH";
      return GetShoutcast(
          PreparedShoutcast(fetch(kShoutcastDirectory, std::wstring(L"/embed_module?reqType=") +
                                                           type + L"&cnt=999&s=" + query.term)));
    }
    case DirectorySource::kIcecast:
      return {GetIcecast(fetch(kIcecastDirectory, L"/search?search=" + query.term)), true};
    case DirectorySource::kLiveDoor:
      return {GetLiveDoor(PreparedLiveDoor(fetch(kLiveDoorDirectory, L"/list/a")),
                          callbacks.toCapitals),
              true};
    case DirectorySource::kHinet:
      return GetHinet(fetch(kHinetDirectory, L"/xml/radioList.jsp"), callbacks.hinetUrl);
    case DirectorySource::kRadioBrowser:
    case DirectorySource::kRadioBrowserTaiwan:
      break;
  }
  return callbacks.searchRadioBrowser(query);
}

}  // namespace tellurvane
