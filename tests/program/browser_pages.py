"""Answers of Radio Browser, written by hand after its documented structure, and their rows."""

from radio_pages import UNKNOWN

# Name, address, address that it leads to, codec, bit rate, hls, and the row's first four texts.
STATIONS = [
    ("臺灣之音 &amp; 朋友 😀", "http://a.example/?x=1&amp;y=2", "https://a.example/live", "MP3", "128", "0",
     ("臺灣之音 & 朋友 😀", "MP3", "128 kbps", "https://a.example/live")),
    ("", "http://b.example/b", "", "AAC+", "0", "0", ("（沒有名稱）", "AAC+", "未知", "http://b.example/b")),
    ("in pieces", "http://c.example/c.m3u8", "", "AAC", "64", "1", None),
    (" &#x4E2D;&#22283;&#10;&quot;R&amp;B&quot; &lt;Live&gt; ", "mms://d.example/台 北", "rtsp://d", "WMA",
     "", "0", ('中國 "R&B" <Live>', "WMA", "未知", "mms://d.example/台 北")),
    ("no address", "", "", "MP3", "64", "0", None),
    ("an address of another kind", "rtsp://e", "ftp://e", "MP3", "64", "0", None),
    ("the first one again", "http://f", "https://a.example/live", "MP3", "320", "0",
     ("the first one again", "MP3", "320 kbps", "https://a.example/live")),
    ("line breaks inside", "http://h/&#10;h", "http://h/&#9;h", "MP3", "64", "0", None),
    ("Zürich", "HTTP://g.example/;stream/1", "", "", "320", "",
     ("Zürich", "", "320 kbps", "HTTP://g.example/;stream/1")),
]


def browser_page(stations=STATIONS):
    lines = [
        f'<station changeuuid="{number}-0" stationuuid="{number}-1" name="{name}" url="{url}" '
        f'url_resolved="{resolved}" homepage="" tags="news,台灣" countrycode="TW" codec="{codec}" '
        f'bitrate="{rate}" hls="{hls}" clickcount="{900 - number}"/>'
        for number, (name, url, resolved, codec, rate, hls, _) in enumerate(stations)]
    return '<?xml version="1.0" encoding="UTF-8"?>\n<result>\n' + "\n".join(lines) + "\n</result>\n"


def browser_rows(stations=STATIONS):
    return [(*row, UNKNOWN, "") for *_, row in stations if row]
