// A few stations as each directory sends them.
#pragma once

#include <string_view>

namespace tellurvane {

inline constexpr std::wstring_view kShoutcastSample =
    L"[{\"id\":\"7\",\"mt\":\"audio/mpeg\",\"name\":\"Smooth lc:9, Jazz\",\"lc\":5,\"br\":128,"
    L"\"genre\":\"Smooth Jazz\",\"ct\":\"Some Artist - Some Title (Live)\"},\n"
    L"{\"id\":\"8\",\"mt\":\"audio/aacp\",\"name\":\"\",\"lc\":0,\"br\":64,\"genre\":\"Pop\"},]\n";

inline constexpr std::wstring_view kIcecastSample =
    L"<tr class=\"row1\"><td class=\"description\"><p class=\"stream-name\"><a "
    L"href=\"http://radio.example/?lang=en&amp;id=7\">Radio &quot;Nova&quot; &amp;lt;1&amp;gt;</a> "
    L"<b>New</b><span class=\"listeners\">[5 listeners]</span></p>\n"
    L"<p class=\"stream-description\">Rock &amp; Roll, Caf&eacute;&hellip; &#39;n&#39; more</p>\n"
    L"<p class=\"stream-onair\"><strong>On Air:</strong> Some Artist - Some Title</p></td>\n"
    L"<td><p>[ <a href=\"/listen/12/listen.m3u\" title=\"&#x41; &#300; &num;1\">M3U</a> ]</p>\n"
    L"<p class=\"format\" title=\"128 kbps\"><a class=\"no-link\" title=\"More MP3 streams\">"
    L"Ogg Vorbis</a></p></td></tr>\n";

inline constexpr std::wstring_view kLiveDoorSample =
    L"<ul><li class=\"title\"><a href=\"/info/1\" title=\"詳細\">深夜のアニメソング放送局</a></li>"
    L"<li class=\"user\"><strong>DJ</strong> 太郎</li>\n<li class=\"button\"><a "
    L"href=\"http://host.example:8000/a.m3u\"><img src=\"/img/play.gif\" alt=\"聴く\"></a></li>\n"
    L"<li class=\"tool\"><img src=\"/img/tool/kbps_128.gif\" alt=\"128kbps\">"
    L"<img src=\"/img/tool/ch_stereo.gif\"><img src=\"/img/tool/type_mp3.gif\"></li>\n"
    L"<li class=\"listener\"><span><span class=\"many\">12é</span> / 100</li></ul>\n";

inline constexpr std::wstring_view kHinetSample =
    L"<item id=\"205\" myTitle=\"中廣流行網\" area=\"全國\" frequency=\"FM 103.3\"/>\n"
    L"<ITEM ID=\"1\" myTitle=\"大愛網路電台\"/>\n<item id=\"7\" myTitle=\"飛揚\"/>\n";

}  // namespace tellurvane
