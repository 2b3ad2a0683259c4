"""Servers of Radio Browser that fail: each search ends in time and in a text that says why."""

import time

import pytest

from browser_pages import browser_page, browser_rows
from desktop import press_key, until
from directories import NO_HOST, Answer, Proxy
from radio import NOTHING, UNREACHABLE, USABLE_WITH_GENRE, RadioDesk, found
from radio_servers import (DOMAIN, NAMES, answers, drips_body, drips_head, hangs_up,
                           hangs_up_as_proxy, is_silent, is_silent_as_proxy, is_silent_before_tls,
                           opens_no_tunnel, sends_without_length, shows)

XML = "text/xml"
PAGE = answers(Answer(browser_page(), kind=XML))
ROWS = browser_rows()
MOST = 4 * 1024 * 1024  # bytes of an answer
SERVER_LIMIT, WHOLE_LIMIT = 5, 10  # seconds
SLACK = 4  # seconds that a busy machine may take
NO_LIST = "電台目錄回應的不是電台清單，或資料不完整。"
NOT_UTF8 = "電台目錄的資料不是 UTF-8 編碼，無法讀取。"
TOO_LARGE = "電台目錄的資料過大，無法讀取。"
TOO_LATE = "電台目錄沒有在時限內回應，請稍後再試一次。"
BAD_CERTIFICATE = "電台目錄的安全憑證無效，已停止連線。（錯誤 0x80072F"


def says(status):
    return f"電台目錄回應錯誤（HTTP {status}），請稍後再試一次。"


def sized(size):
    page = browser_page().encode("utf-8")
    return page + b" " * (size - len(page))


HALF = browser_page().encode("utf-8")[:700]
# Answers, and how the text begins. None of them is a list, so every server is asked.
ANSWERS = {
    "a broken server": (Answer(browser_page(), "503 Service Unavailable"), says(503)),
    "not found": (Answer("sorry", "404 Not Found"), says(404)),
    "elsewhere": (Answer("", "302 Found", headers=[f"Location: https://fi1{DOMAIN}/"]), says(302)),
    "nothing": (Answer(""), NO_LIST),
    "a web page": (Answer("<!DOCTYPE html><html><p>502</html>"), NO_LIST),
    "another list": (Answer("<html><station name='a' url='http://a'/></html>"), NO_LIST),
    "JSON": (Answer('[{"name":"a","url":"http://a"}]'), NO_LIST),
    "half a document": (Answer(HALF, kind=XML), NO_LIST),
    "half of what was announced": (Answer(HALF, kind=XML, length=len(HALF) + 900), NO_LIST),
    "an entity": (Answer('<!DOCTYPE r [<!ENTITY e "x">]><result><station name="&e;" '
                         'url="http://a"/></result>', kind=XML), NO_LIST),
    "Big5": (Answer('<result><station name="台北" url="http://a"/></result>'.encode("big5"),
                    kind="text/xml; charset=big5"), NOT_UTF8),
    "too much": (Answer(sized(MOST + 1), kind=XML), TOO_LARGE),
    "too much without a length": (sends_without_length(sized(MOST + 1)), TOO_LARGE),
}


@pytest.fixture
def desk(start, radio_servers):
    return RadioDesk(start().started(), radio_servers)


def ask(desk):
    """Searches, and returns the servers that were asked and the seconds that it took."""
    desk.servers.take_asked()
    begin = time.monotonic()
    desk.dialog.click("search")
    until(lambda: desk.servers.asked, "the first server asked")
    until(desk.dialog.is_idle, "the end of the search")
    seconds = time.monotonic() - begin
    assert desk.dialog.usable() == USABLE_WITH_GENRE
    return desk.servers.take_asked(), seconds


def test_each_bad_answer_gives_a_reason_and_the_next_search_works(desk, radio_servers):
    for what, (answer, reason) in ANSWERS.items():
        radio_servers.do(answers(answer) if isinstance(answer, Answer) else answer)
        asked, _ = ask(desk)
        assert asked == list(NAMES), what
        assert desk.dialog.status().startswith(reason), what
        assert desk.dialog.status() != NOTHING, what
        assert desk.dialog.rows() == [], what
    radio_servers.do(PAGE)
    assert ask(desk)[0] == ["all"]
    desk.shows(found(len(ROWS)), ROWS)
    assert desk.program.code() is None


def test_a_list_without_stations_is_an_answer(desk, radio_servers):
    for page in ("<result/>", "<result>\n</result>",
                 '<result><station name="a" url="rtsp://a" hls="0"/></result>'):
        radio_servers.do(answers(Answer(page, kind=XML)))
        assert ask(desk)[0] == ["all"]
        desk.shows(NOTHING, [])


def test_the_largest_answer_is_read(desk, radio_servers):
    radio_servers.do(answers(Answer(sized(MOST), kind=XML)))
    assert ask(desk)[0] == ["all"]
    desk.shows(found(len(ROWS)), ROWS)


def test_a_server_that_answers_badly_is_followed_by_the_next(desk, radio_servers):
    first, second, third, fourth = NAMES
    radio_servers.do(answers(Answer("<result><station", kind=XML)), first)
    radio_servers.do(hangs_up, second)
    radio_servers.do(answers(Answer("", "500 Internal Server Error")), third)
    radio_servers.do(PAGE, fourth)
    assert ask(desk)[0] == list(NAMES)
    desk.shows(found(len(ROWS)), ROWS)


def test_a_certificate_that_does_not_fit_is_a_failure(desk, radio_servers, root, foreign_root):
    hosts = [name + DOMAIN for name in NAMES]
    for certificate in (foreign_root.sign(*hosts), root.sign("radio-browser.invalid")):
        radio_servers.do(shows(certificate))
        assert ask(desk)[0] == list(NAMES)
        assert desk.dialog.status().startswith(BAD_CERTIFICATE)
        assert not any(radio_servers.requests), "no request was sent to the wrong server"


def test_connections_that_fail_are_reported(desk, radio_servers):
    for act, reason in ((opens_no_tunnel, says(502)), (hangs_up, NO_LIST),
                        (hangs_up_as_proxy, f"{UNREACHABLE}（錯誤 0x80072")):
        radio_servers.do(act)
        assert ask(desk)[0] == list(NAMES)
        assert desk.dialog.status().startswith(reason)
        assert desk.dialog.rows() == []


def test_no_network_is_reported(start, radio_servers):
    with Proxy(f"{NO_HOST}:80"):
        desk = RadioDesk(start().started(), radio_servers)
        desk.dialog.click("search")
        until(lambda: (desk.dialog.status() or "").startswith(f"{UNREACHABLE}（錯誤 0x80072E"),
              "the message")
        assert desk.dialog.usable() == USABLE_WITH_GENRE
    assert radio_servers.asked == []


@pytest.mark.parametrize("act", [is_silent_as_proxy, is_silent_before_tls, is_silent, drips_head,
                                 drips_body])
def test_a_server_has_five_seconds(desk, radio_servers, act):
    radio_servers.do(PAGE)
    radio_servers.do(act, "all")
    asked, seconds = ask(desk)
    assert asked == ["all", "de1"]
    assert SERVER_LIMIT <= seconds < SERVER_LIMIT + SLACK
    desk.shows(found(len(ROWS)), ROWS)


def test_all_servers_together_have_ten_seconds(desk, radio_servers):
    radio_servers.do(is_silent)
    asked, seconds = ask(desk)
    assert asked == ["all", "de1"]
    assert WHOLE_LIMIT <= seconds < WHOLE_LIMIT + SLACK
    desk.shows(TOO_LATE, [])
    # A dialog that is closed while a server is silent, and a program that ends before that server.
    radio_servers.do(drips_body)
    desk.dialog.click("search")
    until(lambda: radio_servers.asked, "the first server asked")
    press_key("Escape")
    desk.dialog.is_gone()
    assert desk.source() == ""
    desk.editor.close("cancel")
    assert desk.program.exit() == 0
