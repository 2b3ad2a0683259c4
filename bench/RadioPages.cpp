#include "bench/RadioPages.h"

#include "radio/StationParsers.h"

namespace tellurvane {
namespace {

// Station after station, and the last one cut off.
template <typename Station>
std::wstring Page(std::wstring head, size_t size, Station station) {
  std::wstring page = std::move(head);
  page.reserve(size);
  for (size_t i = 0; page.size() < size; ++i) page += station(std::to_wstring(i));
  page.resize(size);
  return page;
}

}  // namespace

std::wstring ShoutcastPage(size_t size) {
  const size_t length = size / kMostShoutcastRows;
  std::wstring page = L"[";
  for (size_t i = 0; i < kMostShoutcastRows; ++i) {
    const std::wstring n = std::to_wstring(i);
    std::wstring record = L"{\"id\":\"99" + n +
                          L"\",\"mt\":\"audio/mpeg\",\"name\":\"Smooth Jazz " + n +
                          L" - the best of the night\",\"lc\":" + n +
                          L",\"br\":128,\"genre\":\"Smooth Jazz\",\"ct\":\"";
    while (record.size() < length - 4) record += L"Some Artist - Some Title (Live) / ";
    record.resize(length - 4);
    page += record + L"\"},\n";
  }
  page.resize(size, L' ');
  return page;
}

std::wstring IcecastPage(size_t size) {
  return Page(
      L"<!DOCTYPE html><html><head><title>Stream Directory</title></head><body>", size,
      [](const std::wstring& n) {
        return L"<tr class=\"row1\">\n  <td class=\"description\">\n"
               L"    <p class=\"stream-name\"><span class=\"name\"><a href=\"http://radio" +
               n +
               L".example/?lang=en&amp;id=7\" onclick=\"return false;\">Radio &quot;Nova"
               L"&quot; &amp; Friends</a></span>\n"
               L"    <span class=\"listeners\">[" +
               n +
               L" listeners]</span></p>\n"
               L"    <p class=\"stream-description\">The best of Rock &amp; Roll, Caf&eacute;"
               L" del Mar and more, all day</p>\n"
               L"    <p class=\"stream-onair\"><strong>On Air:</strong> Some Artist - Some"
               L" Title</p>\n  </td>\n  <td class=\"tune-in\">\n"
               L"    <p>Tune in:</p>\n    <p>[ <a href=\"/listen/" +
               n +
               L"/listen.m3u\" title=\"Listen to &#39;Nova&#39;\">M3U</a> | "
               L"<a href=\"/listen/" +
               n +
               L"/listen.xspf\">XSPF</a> ]</p>\n"
               L"    <p class=\"format\" title=\"128 kbps\">"
               L"<a class=\"no-link\" href=\"/by_format/MP3\" title=\"More MP3 streams\">"
               L"MP3</a></p>\n  </td>\n</tr>\n";
      });
}

std::wstring LiveDoorPage(size_t size) {
  return Page(L"<html><body><div id=\"list\">", size, [](const std::wstring& n) {
    return L"<div class=\"station\"><ul><li class=\"title\"><a href=\"/info/" + n +
           L"\" title=\"詳細\">深夜のアニメソング放送局その" + n +
           L"</a></li><li class=\"user\"><strong>DJ</strong> 太郎</li>\n"
           L"<li class=\"genre\">音楽/アニメ</li><li class=\"button\"><a href=\"http://std1.example"
           L":8000/live" +
           n +
           L".m3u\"><img src=\"/img/play.gif\" alt=\"聴く\"></a></li>\n"
           L"<li class=\"tool\"><img src=\"/img/tool/kbps_128.gif\" alt=\"128kbps\">"
           L"<img src=\"/img/tool/ch_stereo.gif\" alt=\"stereo\">"
           L"<img src=\"/img/tool/type_mp3.gif\" alt=\"mp3\"></li>\n"
           L"<li class=\"listener\"><span><span class=\"many\">" +
           n + L"</span> / 100</li></ul></div>\n";
  });
}

std::wstring HinetPage(size_t size) {
  return Page(L"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<RadioList>\n", size,
              [](const std::wstring& n) {
                return L"  <item id=\"" + n + L"\" myTitle=\"中廣流行網第" + n +
                       L"台\" area=\"全國\" type=\"流行音樂\" frequency=\"FM 103.3\" note=\"\"/>\n";
              });
}

std::wstring Flood(std::wstring_view piece, size_t size) {
  std::wstring page;
  page.reserve(size + piece.size());
  while (page.size() < size) page += piece;
  page.resize(size);
  return page;
}

}  // namespace tellurvane
