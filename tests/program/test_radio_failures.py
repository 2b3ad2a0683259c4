"""Directories that fail: each search ends in rows or in a message, and the next one works."""

import gzip
import threading

import pytest

from desktop import click_at, press_key, until
from directories import NO_HOST, Answer, Proxy
from radio import (HINET, ICECAST, NOTHING, SHOUTCAST, UNREACHABLE, USABLE_WITH_GENRE, RadioDesk,
                   found)
from radio_pages import (hinet_page, hinet_rows, icecast_page, icecast_rows, shoutcast_name,
                         shoutcast_page, shoutcast_rows)

PAGE = shoutcast_page(3)
ROWS = shoutcast_rows(3)
ADDRESS = "http://www.shoutcast.com/embed_module"
MOVED = "http://www.shoutcast.com/moved"
HTML = "text/html"
INCOMPLETE = "，電台目錄的資料不完整"

# Answers, and the rows that they give.
ANSWERS = {
    "an error page with stations": (Answer(PAGE, "404 Not Found"), ROWS),
    "a broken server": (Answer("sorry", "500 Internal Server Error"), []),
    "a proxy that finds no host": (Answer("no such host", "502 Bad Gateway"), []),
    "an empty page": (Answer(""), []),
    "a compressed page": (Answer(gzip.compress(PAGE.encode("utf-8")),
                                 headers=["Content-Encoding: gzip"]), ROWS),
    "no charset": (Answer(PAGE, kind=HTML), ROWS),
    "neither charset nor kind": (Answer(PAGE, kind=None), ROWS),
    "an unknown charset": (Answer(PAGE, kind=f"{HTML}; charset=none-such"), ROWS),
    "a page elsewhere": (Answer("moved", "302 Found", headers=[f"Location: {MOVED}"]), ROWS),
}


@pytest.fixture
def desk(start, directories):
    return RadioDesk(start().started(), directories, source=SHOUTCAST)


def choose_hinet(desk):
    desk.dialog.choose("source", HINET)
    until(lambda: "genre" not in desk.dialog.usable(), "no search")


def is_unreachable(dialog):
    """Waits for the message, after which the dialog can be used."""
    until(lambda: (dialog.status() or "").startswith(f"{UNREACHABLE}（錯誤 0x800C"), "the message")
    until(dialog.is_idle, "the end of the search")
    assert (dialog.usable(), dialog.rows()) == (USABLE_WITH_GENRE, [])


def test_each_answer_gives_rows_or_the_text_that_there_are_none(desk, directories):
    directories.serves(MOVED, PAGE)
    for what, (answer, rows) in ANSWERS.items():
        directories.serves(ADDRESS, answer)
        assert len(desk.search()) == (2 if "elsewhere" in what else 1), what
        assert desk.dialog.status() == (found(len(rows)) if rows else NOTHING), what
        assert desk.dialog.rows() == rows, what
        assert desk.dialog.usable() == USABLE_WITH_GENRE, what
    # A wrong charset garbles nothing but names.
    page = shoutcast_page(3).replace(" – é", "").encode("big5")
    for charset in ("utf-8", "big5"):
        directories.serves(ADDRESS, Answer(page, kind=f"{HTML}; charset={charset}"))
        desk.search()
        rows = desk.dialog.rows()
        assert [row[1:] for row in rows] == [row[1:] for row in ROWS], charset
        assert [f"Station {number}" in row[0] for number, row in enumerate(rows)] == [True] * 3


def test_half_a_page_gives_the_stations_that_are_complete(desk, directories):
    # In the second station's name. The search for the missing data goes back to the first station,
    # and from there finds the second one again, until the list is full.
    cut = PAGE.index(shoutcast_name(1)) + 3
    directories.serves(ADDRESS, Answer(PAGE[:cut], length=len(PAGE.encode("utf-8"))))
    desk.search()
    name, kind, rate, _, _, last = ROWS[0]
    listeners = '收聽人數："\r\nid:"0"'
    desk.shows(found(200) + INCOMPLETE,
               [ROWS[0]] + 199 * [(name, kind, rate, ROWS[1][3], listeners, last)])
    page = icecast_page().encode("utf-8")
    cut = page.index(b"/listen/7/") + 4
    directories.serves("http://dir.xiph.org/", Answer(page[:cut], length=len(page)))
    desk.dialog.choose("source", ICECAST)
    desk.search()
    desk.shows(found(7), icecast_rows()[:7])
    page = hinet_page().encode("utf-8")
    cut = page.index("我的大愛".encode("utf-8")) + 3
    directories.serves("http://hichannel.hinet.net/", Answer(page[:cut], length=len(page)))
    choose_hinet(desk)
    desk.search()
    desk.shows(found(2) + INCOMPLETE, hinet_rows("mms://host/RA")[:2])


def test_a_page_that_may_be_cached_is_asked_for_each_time(desk, directories):
    headers = ["Cache-Control: public, max-age=86400", 'ETag: "1"',
               "Expires: Fri, 31 Dec 2049 23:59:59 GMT",
               "Last-Modified: Mon, 14 Feb 2011 12:00:00 GMT"]
    for count in (3, 5, 4):
        directories.serves(ADDRESS, Answer(shoutcast_page(count), headers=headers))
        request, = desk.search()
        assert b"\r\nIf-" not in request
        assert desk.dialog.rows() == shoutcast_rows(count)


def test_a_connection_that_fails_is_reported_and_forgotten(desk, directories):
    directories.serves(ADDRESS, PAGE)
    desk.search()
    directories.close()
    try:
        desk.dialog.click("search")
        is_unreachable(desk.dialog)
    finally:
        directories.open()
    desk.search()
    desk.shows(found(3), ROWS)


def test_a_host_that_is_not_found_is_reported(start, directories):
    with Proxy(f"{NO_HOST}:80"):
        desk = RadioDesk(start().started(), directories, source=SHOUTCAST)
        desk.dialog.click("search")
        is_unreachable(desk.dialog)
    assert directories.requests == []
    assert desk.program.code() is None


def test_the_dialog_waits_for_ten_seconds_of_silence_and_ignores_clicks(desk, directories):
    silence = threading.Event()
    directories.serves(ADDRESS, Answer(PAGE, silence=lambda: silence.wait(10)))
    desk.dialog.click("search")
    until(lambda: directories.requests, "the request")
    click_at(desk.dialog.rects["search"], times=3)
    desk.dialog.click("add")
    until(desk.dialog.is_idle, "the end of the search")
    desk.shows(found(3), ROWS)
    assert desk.dialog.usable() == USABLE_WITH_GENRE
    assert len(directories.requests) == 1


def test_the_dialog_can_be_left_during_the_silence(desk, directories):
    spoken = threading.Event()
    directories.serves(ADDRESS, Answer(PAGE, silence=lambda: spoken.wait(30)))
    for leave in (lambda: press_key("Escape"), lambda: desk.dialog.click("close")):
        asked = len(directories.requests)
        desk.dialog.click("search")
        until(lambda: len(directories.requests) > asked, "the request")
        leave()
        spoken.set()
        desk.dialog.is_gone()
        spoken.clear()
        desk.open()
    assert desk.dialog.status() == ""
    assert desk.source() == ""
    spoken.set()
    desk.search()
    assert desk.dialog.rows() == ROWS


def test_ten_megabytes_are_read(desk, directories):
    directories.serves(ADDRESS, PAGE + "<p>no station</p>" * (10_000_000 // 17))
    desk.search()
    desk.shows(found(3), ROWS)
    count = 10_000_000 // 30
    items = "".join(f'<item id="{number}" myTitle="t" />\r\n' for number in range(count))
    directories.serves("http://hichannel.hinet.net/", items)
    choose_hinet(desk)
    desk.search()
    assert desk.dialog.status() == found(count)
    desk.dialog.click("list")
    press_key("End", "Return")
    desk.dialog.is_gone()
    assert desk.source() == f"mms://host/RA{count - 1}"
