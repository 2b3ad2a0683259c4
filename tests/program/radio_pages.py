"""Pages in the forms of the four directories, and the rows that they should give."""

UNKNOWN = "收聽人數：未知"
TUNE_IN = "http://yp.shoutcast.com/sbin/tunein-station.pls?id="
ICECAST = "http://dir.xiph.org"


def shoutcast_name(number):
    return f"電台 Station {number} – é"


def shoutcast_page(count):
    records = [f'{{"id":"{number}","mt":"audio/aacp","name":"{shoutcast_name(number)}",'
               f'"lc":{number * 3},"br":{number % 320},"genre":"Jazz"}}' for number in range(count)]
    return f"[{','.join(records)}]"


def shoutcast_rows(count):
    return [(shoutcast_name(number), "audio/aacp", f"{number % 320} kbps", f"{TUNE_IN}{number}",
             f"收聽人數：{number * 3}", "") for number in range(count)]


# As on the page, and as shown.
ICECAST_NAMES = [
    ("Plain", "Plain"), ("R&amp;B &amp; Soul", "R&B & Soul"), ("Caf&eacute;", "Café"),
    ("&#65;&#66;C", "ABC"), ("&quot;Live&quot;", '"Live"'), ("&lsquo;t is", "‘t is"),
    ("<b>Bold</b> Radio", "Bold Radio"), ("wide&nbsp;open", "wide open"), ("&#x41;", "&#x41;"),
    ("臺灣之音", "臺灣之音"), ("&copy; 2011", "© 2011"), ("&Uuml;ber", "Über"),
    ("more&hellip;", "more…;"), ("&frac12; hour", "½ hour"), ("&apos;round", "'round"),
    ("a &ndash; b", "a – b"), ("&iexcl;Viva!", "¡Viva!"), ("&#169;", "©"),
    ("tab\there", "tab\there"), ("&amp;#65;", "&#65;"),
]
# Format and bit rate as on the page, and as shown.
ICECAST_FORMATS = [("MP3", "128 kbps", "MP3", "128 kbps"), ("Ogg Vorbis", "0 kbps", "OGG", "未知"),
                   ("AAC+", "", "AAC+", "未知"), ("Other", "Quality 5", "MP3", "Quality 5")]


def _icecast_format(number):
    return ICECAST_FORMATS[number % len(ICECAST_FORMATS)]


def icecast_page():
    blocks = []
    for number, (name, _) in enumerate(ICECAST_NAMES):
        kind, rate, _, _ = _icecast_format(number)
        blocks.append(
            f'<tr><td><span class="listeners">[{number + 1} listeners]</span>'
            f'<p class="stream-description">{name}</p>'
            f'<a href="/listen/{number}/listen.m3u">M3U</a>'
            f'<p class="format" title="{rate}"><a class="streams">{kind}</a></p></td></tr>')
    return f"<html><body><table>{''.join(blocks)}</table></body></html>"


def icecast_rows():
    return [(shown, _icecast_format(number)[2], _icecast_format(number)[3],
             f"{ICECAST}/listen/{number}/listen.m3u", f"收聽人數：{number + 1}", "")
            for number, (_, shown) in enumerate(ICECAST_NAMES)]


# Title, DJ, address, bit rate, channel, type, listeners, and whether it is marked as popular.
LIVEDOOR = [
    ("夜のジャズ喫茶", "太郎", "http://std1.ladio.example:8020/jazz.m3u", 64, "stereo", "mp3", 12, 0),
    ("アニソン祭り", "花子", "http://std1.ladio.example:8040/anison.ogg", 128, "mono", "ogg", 250, 1),
    ("朝のニュース", "次郎", "http://std1.ladio.example/a\tb\r\nc.m3u", 24, "Stereo", "aac", 0, 0),
]


def livedoor_page():
    blocks = []
    for title, host, address, rate, channel, kind, listeners, is_popular in LIVEDOOR:
        many = '<span class="many">' if is_popular else ""
        blocks.append(
            f'<ul><li class="button"><a href="{address}">聴く</a></li>'
            f'<li><a href="/page" title="詳細">{title}</a></li><li class="user"><strong>DJ'
            f'{host}</strong></li><li><img src="/img/tool/kbps_{rate}.gif">'
            f'<img src="/img/tool/ch_{channel}.gif"><img src="/img/tool/type_{kind}.gif"></li>'
            f'<li class="listener"><span>{many}{listeners}</span></li></ul>')
    return f"<html><body>{''.join(blocks)}</body></html>"


def livedoor_rows():
    return [(f"{title} DJ{host}", kind.upper(),
             f"{rate} kbps {'雙聲道' if channel == 'stereo' else '單聲道'}", address,
             f"收聽人數：{listeners}", "")
            for title, host, address, rate, channel, kind, listeners, _ in LIVEDOOR]


LEFT_OUT = ["警廣", "全國", "Br", "ne", "大愛", "古都", "真心", "臺北", "台灣", "正義", "快樂", "非凡",
            "新客"]
LISTED = ["飛碟電台", "中廣流行網", "我的大愛", "NEws98", "北", "愛樂 '電台", "br 小寫"]


def hinet_page():
    left_out = [f"{prefix}電台" for prefix in LEFT_OUT]
    titles = [title for pair in zip(LISTED, left_out) for title in pair]
    titles += left_out[len(LISTED):]
    items = "".join(f'<item id="{number}" myTitle="{title}" />\r\n'
                    for number, title in enumerate(titles))
    return f'<?xml version="1.0" encoding="UTF-8"?>\r\n<list>\r\n{items}</list>'


def hinet_rows(prefix):
    """The listed stations have every second place."""
    return [(title, "WMA", "48 kbps", f"{prefix}{2 * number}", UNKNOWN, "")
            for number, title in enumerate(LISTED)]
