"""Makes the pictures of the guide and the READMEs: scripts/pictures runs it at each density.

The program is real, its data are samples, and the radio stations come from a stand-in.
TELLURVANE_PICTURES names the folder for the pictures, TELLURVANE_DPI the density.
"""

import os
from datetime import datetime, timedelta
from pathlib import Path

from browser_pages import browser_page
from clock import clock_shows
from desktop import click_at, geometry, picture, run, until, windows_path
from directories import Answer
from due import start_with
from editor import Editor
from harness import SETTINGS
from radio import ROW_HEIGHT, TAIWAN, RadioDesk
from radio_servers import answers
from sound import LOW, make_wav
from task_list import APPLICATION, HOURS, MINUTES, MUSIC, RADIO, Task, now

DENSITY = int(os.environ["TELLURVANE_DPI"])
PICTURES = Path(os.environ["TELLURVANE_PICTURES"])
FAR_CORNER = (1900, 1340)
JAZZ = 13  # among the genres

TASKS = [Task("台北愛樂", "http://radio.example.org:8000/live", unit=HOURS, interval=12,
              media_type=RADIO),
         Task("晨間音樂", r"C:\音樂\晨間.mp3", media_type=MUSIC),
         Task("備份資料", r"xcopy C:\文件 D:\備份 /E /Y", media_type=APPLICATION),
         Task("喝水", r"休息一下，\r\n喝一杯水。", unit=MINUTES, interval=45)]
NOTES = ["喝杯水，站起來走一走。", "下午三點開會，請帶筆電。",
         r"今天下班前要記得：\r\n一、把報告寄給小美\r\n二、買牛奶與蛋\r\n三、打電話給媽媽"]
JAZZ_STATIONS = [("Harbour Lights Jazz", "MP3", 128), ("Jazz à la Nuit", "AAC+", 64),
                 ("Blue Groove – soul jazz and funk around the clock", "MP3", 192),
                 ("台北夜爵士 Taipei Night Jazz", "AAC+", 96), ("Club 52", "MP3", 320),
                 ("Riverside Swing", "OGG", 160), ("Smooth Avenue", "AAC", 128),
                 ("Café Lumière", "MP3", 0), ("爵士咖啡館", "MP3", 128),
                 ("Lakeside Big Band", "AAC+", 48), ("Vocal Standards", "MP3", 256),
                 ("Midnight Trio", "MP3", 128)]
TAIWAN_STATIONS = [("海岸線音樂網", "MP3", 128), ("山城早安電台", "AAC+", 64),
                   ("港都之聲 FM 99.9", "MP3", 96), ("島嶼新聞網", "AAC", 48),
                   ("稻浪古典台", "MP3", 192), ("夜行列車電台", "AAC+", 96),
                   ("原野客語廣播", "MP3", 64), ("南風台語歌", "MP3", 128), ("小鎮電台", "MP3", 0),
                   ("晨光輕音樂", "OGG", 160), ("巷口說書人", "AAC+", 32)]


def keep(rect, name):
    """Saves a part of the screen, once it has stopped changing."""
    run("xdotool", "mousemove", *FAR_CORNER)
    looks = []

    def is_still():
        looks.append(picture(rect))
        return looks[-3:] == [looks[-1]] * 3

    until(is_still, name)
    save(looks[-1], name)


def save(look, name):
    PICTURES.mkdir(parents=True, exist_ok=True)
    look.convert("RGB").save(PICTURES / f"{name}.png", optimize=True)


def with_frame(x_window):
    """The rectangle of a window and its frame."""
    left, top, width, height = geometry(x_window, "Absolute upper-left X", "Absolute upper-left Y",
                                        "Width", "Height")
    extents = run("xprop", "-id", x_window, "_NET_FRAME_EXTENTS").partition("=")[2]
    west, east, north, south = (int(number) for number in extents.split(","))
    return [left - west, top - north, left + width + east, top + height + south]


def test_the_main_window(folder, start, tmp_path):
    music = make_wav(tmp_path / "morning.wav", 20, LOW)
    folder.write_list(
        Task("早晨音樂", windows_path(music), datetime.now() + timedelta(hours=7), media_type=MUSIC),
        Task("休息一下，喝杯水", "text", datetime.now() + timedelta(minutes=17), unit=MINUTES,
             interval=30),
        Task("古典音樂電台", "http://radio.example.org:8000/live", unit=HOURS, interval=12,
             media_type=RADIO))
    program = start().started()
    until(program.main_window, "the main window")
    program.press("Home")
    program.press("Return")
    until(program.position_is_enabled, "the music")
    begun = now()
    until(lambda: now() >= begun + timedelta(seconds=5), "some of the music")
    run("xdotool", "mousemove", *FAR_CORNER)
    # It never stands still while music plays.
    save(picture(with_frame(program.main_on_screen()[0])), "main-window")


def test_the_editor_and_the_editor_of_a_note(folder, start):
    folder.write_list(*TASKS)
    program = start().started()
    until(program.main_window, "the main window")
    program.press("End")
    program.press("F2")
    editor = Editor(program)
    editor.shows("name", "喝水")
    keep(with_frame(program.on_screen("編輯排程專案")[0]), "editor")
    main = program.main_on_screen()
    editor.click("...")
    until(lambda: len(program.main_on_screen()) > len(main), "the editor of the note")
    note_editor, = set(program.main_on_screen()) - set(main)
    keep(with_frame(note_editor), "note-editor")


def test_the_notes(folder, start):
    program, _ = start_with(folder, start, lambda moment: [
        Task(str(number), text, moment) for number, text in enumerate(NOTES)])
    notes = until(lambda: len(program.notes()) == len(NOTES) and program.notes(), "the notes")
    lefts, tops, rights, bottoms = zip(*[note["rect"] for note in notes])
    keep([min(lefts), min(tops), max(rights), max(bottoms)], "notes")


def test_the_clock(folder, start):
    folder.write_settings(SETTINGS | {"TimeForm": "1"})
    folder.write_list()
    keep(clock_shows(start().started())["rect"], "clock")


def page(stations):
    return answers(Answer(browser_page([
        (name, f"http://stream.example/{number}", "", codec, str(rate), "0", None)
        for number, (name, codec, rate) in enumerate(stations)]), kind="text/xml; charset=utf-8"))


def keep_directory(desk, row, name):
    desk.search()
    left, _, right, bottom = desk.dialog.rects["header"]
    height = ROW_HEIGHT * DENSITY // 96
    click_at([left, bottom + row * height, right, bottom + (row + 1) * height], x=0.3)
    keep(with_frame(desk.program.on_screen("^Radio List$")[0]), name)


def test_the_radio_directory(start, radio_servers):
    radio_servers.do(page(JAZZ_STATIONS))
    desk = RadioDesk(start().started(), radio_servers)
    desk.dialog.choose("genre", JAZZ)
    keep_directory(desk, 3, "radio")
    radio_servers.do(page(TAIWAN_STATIONS))
    desk.dialog.choose("source", TAIWAN)
    keep_directory(desk, 2, "radio-taiwan")
