"""The radio directory with real clicks, keys and HTTP: searched, and a station chosen and saved."""

import pytest

from desktop import click_at, press_key, until
from harness import SETTINGS
from radio import (ALWAYS_USABLE, HINET, ICECAST, LIVEDOOR, NOTHING, SHOUTCAST, USABLE_WITH_GENRE,
                   USABLE_WITH_KEYWORD, RadioDesk, found)
from radio_pages import (TUNE_IN, hinet_page, hinet_rows, icecast_page, icecast_rows,
                         livedoor_page, livedoor_rows, shoutcast_page, shoutcast_rows)
from task_list import RADIO

NEW_AGE, R_AND_B = 7, 18  # of the genres


def request(host, rest):
    """All the bytes of a request, as the system sends it to a proxy."""
    return (f"GET http://{host}:80{rest} HTTP/1.1\r\nAccept: */*\r\nHost: {host}\r\n"
            "User-Agent: Mozilla/5.0 (Windows; U; Windows NT 5.1; zh-en; rv:1.9.2) "
            "Gecko/20100115 Firefox/3.6\r\nAccept-Encoding: gzip, deflate\r\n"
            "Connection: Keep-Alive\r\n\r\n").encode("latin-1")


@pytest.fixture
def desk(start, directories):
    return RadioDesk(start().started(), directories)


def test_shoutcast_by_genre_and_a_double_click(desk, directories):
    directories.serves("http://www.shoutcast.com/embed_module", shoutcast_page(250))
    dialog = desk.dialog
    dialog.choose("source", SHOUTCAST)
    assert dialog.usable() == USABLE_WITH_GENRE
    for genre, sent in ((NEW_AGE, "new%20age"), (R_AND_B, "R&B")):
        dialog.choose("genre", genre)
        assert desk.search() == [request(
            "www.shoutcast.com", f"/embed_module?reqType=GENRE_SEARCH&cnt=999&s={sent}")]
    # The answer holds more than are listed.
    desk.shows(found(200), shoutcast_rows(200))
    click_at(dialog.row(2), x=0.2, times=2)
    dialog.is_gone()
    assert desk.source() == f"{TUNE_IN}2"
    task = desk.save()
    assert (task.name, task.media_type, task.source) == ("station", RADIO, f"{TUNE_IN}2")


def test_shoutcast_and_icecast_by_keyword_and_by_keys_alone(desk, directories):
    directories.serves("http://www.shoutcast.com/", "no station")
    directories.serves("http://dir.xiph.org/search", icecast_page())
    dialog = desk.dialog
    dialog.choose("source", SHOUTCAST)
    dialog.click("by keyword")
    until(lambda: dialog.usable() == USABLE_WITH_KEYWORD, "the keyword's box")
    dialog.type_keyword("R&B  live?")

    def enter():
        press_key("Return")

    assert desk.search(enter) == [request(
        "www.shoutcast.com", "/embed_module?reqType=KEYWORD_SEARCH&cnt=999&s=R&B%20%20live?")]
    desk.shows(NOTHING, [])
    # The keyboard is where it was.
    dialog.choose("source", ICECAST)
    dialog.type_keyword("new age")
    assert desk.search(enter) == [request("dir.xiph.org", "/search?search=new%20age")]
    desk.shows(found(20), icecast_rows())
    press_key("Tab", "Tab", "Home", "Down", "Return")
    dialog.is_gone()
    assert desk.source() == "http://dir.xiph.org/listen/1/listen.m3u"
    assert desk.save().source == "http://dir.xiph.org/listen/1/listen.m3u"


def test_livedoor_has_one_list_whose_addresses_cannot_break_the_file(desk, directories, folder,
                                                                     start):
    directories.serves("http://live.ladio.livedoor.com/list/a", livedoor_page())
    dialog = desk.dialog
    dialog.choose("source", LIVEDOOR)
    until(lambda: dialog.usable() == ALWAYS_USABLE, "no search")
    assert desk.search() == [request("live.ladio.livedoor.com", "/list/a")]
    desk.shows(found(3), livedoor_rows())
    assert dialog.usable() == ALWAYS_USABLE
    click_at(dialog.row(2), x=0.2)
    dialog.click("add")
    dialog.is_gone()
    source = "http://std1.ladio.example/a b c.m3u"
    assert desk.source().split() == source.split()
    assert desk.save().source == source
    desk.editor.close()
    assert desk.program.exit() == 0
    before = folder.list.read_bytes()
    start().started()
    assert folder.list.read_bytes() == before
    assert folder.backups() == []


def test_hinet_leaves_stations_out_and_puts_the_prefix_before_the_id(folder, directories, start):
    directories.serves("http://hichannel.hinet.net/xml/radioList.jsp", hinet_page())
    program = start().started()
    folder.write_settings(SETTINGS | {"HinetUrl": "mms://other/"})  # read once, at the start
    desk = RadioDesk(program, directories)
    dialog = desk.dialog
    dialog.choose("source", HINET)
    assert desk.search() == [request("hichannel.hinet.net", "/xml/radioList.jsp")]
    rows = hinet_rows(SETTINGS["HinetUrl"])
    desk.shows(found(len(rows)), rows)
    click_at(dialog.row(1), x=0.2)
    press_key("Down", "Return")
    dialog.is_gone()
    assert desk.source() == rows[2][3] == "mms://host/RA4"
    # Closed without a station chosen, the dialog leaves the source as it is.
    desk.open()
    desk.dialog.click("add")
    desk.dialog.is_gone()
    assert desk.save().source == rows[2][3]


def test_the_search_is_remembered_and_sent_in_the_code_page(folder, directories, start):
    folder.write_settings(SETTINGS | {"Genre": "26", "SearchName": "台北", "SearchType": "1"})
    directories.serves("http://dir.xiph.org/search", icecast_page())
    desk = RadioDesk(start().started(), directories)
    dialog = desk.dialog
    assert dialog.usable() == USABLE_WITH_KEYWORD
    dialog.choose("source", ICECAST)
    line = desk.search()[0].split(b"\r\n")[0]
    assert line == (b"GET http://dir.xiph.org:80/search?search=" + "台北".encode("cp950")
                    + b" HTTP/1.1")
    dialog.type_keyword("jazz")
    dialog.click("by genre")
    until(lambda: "genre" in dialog.usable(), "the genre's list")
    assert folder.read_settings()["SearchType"] == "0"
    dialog.choose("genre", NEW_AGE)
    press_key("Escape")
    dialog.is_gone()
    assert desk.source() == "", "no station was chosen"
    remembered = {"Genre": "7", "SearchName": "jazz", "SearchType": "0"}
    assert folder.read_settings() == SETTINGS | remembered
    desk.open()
    controls = desk.dialog.controls()
    assert controls["keyword"]["text"] == "jazz"
    assert controls["genre"]["text"] == "新世紀音樂 (New Age)"
    assert "genre" in desk.dialog.usable()
