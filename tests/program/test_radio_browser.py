"""Radio Browser with real clicks and TLS, against servers on this machine."""

import re
from pathlib import Path

import pytest

from browser_pages import browser_page, browser_rows
from desktop import click_at, until
from directories import Answer
from harness import SETTINGS
from radio import (ALWAYS_USABLE, TAIWAN, USABLE_WITH_GENRE, USABLE_WITH_KEYWORD, RadioDesk,
                   found)
from radio_servers import DOMAIN, answers, opens_no_tunnel
from task_list import RADIO

TOP, R_AND_B, JAZZ = 0, 18, 13  # of the genres
SEARCH = "/xml/stations/search?hidebroken=true&order=clickcount&reverse=true&limit=200"
PAGE = answers(Answer(browser_page(), kind="text/xml"))


def user_agent():
    project = (Path(__file__).parents[2] / "CMakeLists.txt").read_text(encoding="utf-8")
    return f"Tellurvane/{re.search(r'project.Tellurvane VERSION (.*?) ', project)[1]}"


def request(server, filters=""):
    """All the bytes of a request under Wine. Windows may send more headers of its own."""
    return (f"GET {SEARCH}{filters} HTTP/1.1\r\nHost: {server}{DOMAIN}\r\n"
            f"User-Agent: {user_agent()}\r\n\r\n").encode("ascii")


def tunnel(server):
    """All the bytes that the proxy is sent, under Wine too."""
    return (f"CONNECT {server}{DOMAIN}:443 HTTP/1.1\r\nHost: {server}{DOMAIN}\r\n"
            f"User-Agent: {user_agent()}\r\n\r\n").encode("ascii")


@pytest.fixture
def desk(start, radio_servers):
    radio_servers.do(PAGE)
    return RadioDesk(start().started(), radio_servers)


def test_a_genre_is_found_and_a_station_is_saved(desk, radio_servers):
    dialog = desk.dialog
    assert dialog.controls()["source"]["text"] == "Radio Browser", "selected when it opens"
    assert dialog.usable() == USABLE_WITH_GENRE
    for genre, filters in ((TOP, ""), (R_AND_B, "&tag=rnb&tagExact=true"),
                           (JAZZ, "&tag=jazz&tagExact=true")):
        dialog.choose("genre", genre)
        assert desk.search() == [request("all", filters)]
    assert set(radio_servers.tunnels) == {tunnel("all")}
    rows = browser_rows()
    desk.shows(found(len(rows)), rows)
    click_at(dialog.row(0), x=0.2, times=2)
    dialog.is_gone()
    assert desk.source() == rows[0][3] == "https://a.example/live"
    task = desk.save()
    assert (task.name, task.media_type, task.source) == ("station", RADIO, rows[0][3])


def test_the_list_of_taiwan_needs_no_search(desk):
    dialog = desk.dialog
    dialog.choose("source", TAIWAN)
    until(lambda: dialog.usable() == ALWAYS_USABLE, "no search")
    assert desk.search() == [request("all", "&countrycode=TW")]
    rows = browser_rows()
    desk.shows(found(len(rows)), rows)
    assert dialog.usable() == ALWAYS_USABLE
    click_at(dialog.row(2), x=0.2)
    dialog.click("add")
    dialog.is_gone()
    assert desk.save().source == rows[2][3] == "mms://d.example/台 北"


@pytest.mark.parametrize("locale", ["zh_TW", "en_US"])
def test_a_chinese_keyword_arrives_whole_in_every_code_page(folder, start, radio_servers, locale):
    folder.write_settings(SETTINGS | {"SearchName": "台北 R&B?+%é", "SearchType": "1"})
    radio_servers.do(PAGE)
    desk = RadioDesk(start(locale=locale).started(), radio_servers)
    assert desk.dialog.usable() == USABLE_WITH_KEYWORD
    assert desk.search() == [
        request("all", "&name=%E5%8F%B0%E5%8C%97%20R%26B%3F%2B%25%C3%A9")]
    assert desk.dialog.rows() == browser_rows()
    desk.dialog.type_keyword("new  age")
    assert desk.search() == [request("all", "&name=new%20%20age")]


def test_the_next_server_is_asked_and_remembered_until_the_dialog_closes(desk, radio_servers):
    rows = browser_rows()
    for failing, asked in ((["all"], ["all", "de1"]),
                           (["de1", "all"], ["de1", "all", "de2"]),
                           (["de2", "de1", "all"], ["de2", "de1", "all", "fi1"])):
        radio_servers.do(PAGE)
        radio_servers.do(opens_no_tunnel, *failing)
        assert desk.search() == [request(asked[-1])]
        assert radio_servers.take_asked() == asked
        desk.shows(found(len(rows)), rows)
    desk.search()
    assert radio_servers.take_asked() == ["fi1"]
    desk.dialog.click("close")
    desk.dialog.is_gone()
    desk.open()
    radio_servers.do(PAGE)
    desk.search()
    assert radio_servers.take_asked() == ["all"]
