"""The kit that runs the tests on Windows, unpacked and tried under Wine."""

import os
import re
import shutil
import subprocess
import zipfile

import pytest

from desktop import BINARIES, DEADLINE
from packages import PREFIX, SOURCE, make_packages, notices_named_in, version

FAKE = "FakeTests"
PROGRAMS = (BINARIES / "kit-programs.txt").read_text("utf-8").split()


@pytest.fixture(scope="module")
def archive(tmp_path_factory):
    return make_packages(tmp_path_factory.mktemp("kit"), "--kit") / f"Tellurvane-{version()}-kit.zip"


@pytest.fixture(scope="module")
def kit(archive, tmp_path_factory):
    """The unpacked kit, away from the source tree, with the fake test program in it."""
    place = tmp_path_factory.mktemp("我的 kit")
    with zipfile.ZipFile(archive) as packed:
        assert packed.testzip() is None
        packed.extractall(place)
    shutil.copy(BINARIES / f"{FAKE}.exe", place / "Tellurvane-kit/tests")
    return place / "Tellurvane-kit"


@pytest.fixture
def check(kit, tmp_path):
    """Runs check.cmd; returns the exit code, what it printed, and the report."""
    def run(*arguments):
        (kit / "report.txt").unlink(missing_ok=True)
        # Into a file: a pipe would stay open in background processes.
        with (tmp_path / "output").open("wb") as output:
            code = subprocess.run(["wine", "cmd", "/c", "check.cmd", *arguments], check=False,
                                  cwd=kit, stdin=subprocess.DEVNULL, stdout=output,
                                  stderr=subprocess.DEVNULL, timeout=3 * DEADLINE).returncode
        report = (kit / "report.txt").read_bytes()
        assert report.startswith(b"\xef\xbb\xbf")
        assert report.count(b"\n") == report.count(b"\r\n")
        lines = (tmp_path / "output").read_text("utf-8").splitlines()
        return code, lines, report.decode("utf-8-sig").replace("\r\n", "\n")
    return run


def aware_programs(files):
    return {name for name, content in files.items()
            if re.search(rb"<dpiAware [^>]*>true<", content)}


def test_the_kit_holds_the_program_the_tests_and_their_files(archive):
    with zipfile.ZipFile(archive) as packed:
        files = {name.removeprefix("Tellurvane-kit/"): packed.read(name)
                 for name in packed.namelist()}
    assert {name for name in files if "/" not in name} == {"check.cmd", "check.exe",
                                                           "on-windows.html"}
    for name in ("Tellurvane.exe", "Setting.ini", "使用說明.html"):
        assert files[f"program/{name}"]
    notices = notices_named_in(files["program/licenses/README.txt"])
    assert notices == {"gcc.txt", "mingw-w64.txt", "googletest.txt"}
    for name in notices:
        assert files[f"program/licenses/{name}"]
    assert len(PROGRAMS) >= 16
    for name in PROGRAMS:
        assert files[f"tests/{name}"] == (BINARIES / name).read_bytes()
    assert files["check.cmd"].count(b"\n") == files["check.cmd"].count(b"\r\n")
    # The numbers of the tests are for 96 dpi.
    assert aware_programs(files) == {"program/Tellurvane.exe", "tests/density_tests.exe"}
    for name, content in files.items():
        assert os.fsencode(SOURCE) not in content, f"{name} names a folder of this machine"


def test_the_page_has_fifteen_steps_and_needs_no_other_file(archive):
    with zipfile.ZipFile(archive) as packed:
        page = packed.read("Tellurvane-kit/on-windows.html").decode("utf-8")
    # The second list goes on with the numbers of the first one.
    first, second = page.split('<ol start="11">')
    step = re.compile(r"<li>\s*(?:<p>)?<strong>[^<]+</strong>.+?→.+?</li>", re.DOTALL)
    assert (len(step.findall(first)), len(step.findall(second))) == (10, 5)
    assert not re.findall(r"(?:src|href)=", page)
    assert not re.findall(r"\*\*|`|^#", page, re.MULTILINE)


def test_packing_again_in_other_surroundings_gives_the_same_bytes(archive, tmp_path):
    environment = os.environ | {"TZ": "Pacific/Auckland", "LC_ALL": "C"}
    again = make_packages(tmp_path / "packed again", "--kit", cwd=tmp_path, env=environment,
                          umask=0o077)
    assert (again / archive.name).read_bytes() == archive.read_bytes()


def test_programs_that_pass_make_a_short_report(check):
    code, lines, report = check("base_tests", "kit_tests")
    assert code == 0, report
    assert re.fullmatch("沒有失敗：通過 [0-9]+，失敗 0，提早結束 0，略過 0", lines[-2])
    assert lines[-1].endswith("report.txt")
    assert report.splitlines()[:3] == [f"Tellurvane {version()} 測試報告", "", lines[-2]]
    locale = os.environ["LC_ALL"].partition(".")[0].replace("_", "-")
    for fact in (r"Windows：10\.0\.[0-9]+（Wine 8\.0）", f"語言：地區格式 {locale}，.*字碼頁 950",
                 "螢幕：1280 x 900，位置 0,0，96 dpi（100 %），主螢幕"):
        assert re.search(f"^{fact}$", report, re.MULTILINE), report
    for name in ("base_tests", "kit_tests"):
        assert re.search(f"^{name}：通過 [1-9][0-9]*，失敗 0", report, re.MULTILINE), report


def test_failures_skips_hangs_and_crashes_are_reported_and_the_rest_runs(check):
    code, lines, report = check("--limit", "8", FAKE, "no_such_tests", "kit_tests")
    assert code == 1, report
    assert lines[-2].startswith("有失敗：")
    assert f"\n{FAKE}：通過 3，失敗 1，提早結束 2，略過 1（" in report
    # The three lists at the end.
    ended, failed, skipped = re.split("\n(?:提早結束（當機或逾時）|失敗|略過)\n\n", report)[1:]
    assert f"{FAKE} Fake.Crashes\n    結束代碼 0xC0000005\n" in ended
    assert f"{FAKE} Fake.Hangs\n    8 秒沒有輸出\n" in ended
    assert "no_such_tests\n    無法啟動（錯誤 2）\n" in ended
    assert re.search(rf"{FAKE} Fake\.Fails\n    \S*tests/kit/FakeTests\.cpp:\d+\n", failed), failed
    assert "    <中文 & more>\n" in failed
    assert re.search(rf"{FAKE} Fake\.IsSkipped\n    \S+\n    because of 理由\n", skipped), skipped
    assert re.search("^kit_tests：通過 [1-9]", report, re.MULTILINE)
    assert not list(PREFIX.glob("drive_c/users/*/**/Tellurvane-check-*"))
    listed = subprocess.run(["wine", "tasklist"], check=False, stdin=subprocess.DEVNULL,
                            capture_output=True, timeout=DEADLINE).stdout
    assert FAKE.encode() not in listed


@pytest.mark.parametrize("program, tests", [
    ("ui_tests", "ClsIconTest.LoadsAFile:IconDirectoryTest.*"),
    ("failing_calls_tests", "FailingCallsTest.AMissingIconIsFatal"),
    ("scheduler_tests", "TaskListCorpusTest.*"),
    ("radio_tests", "RadioCorpus.*"),
    ("mainwin_tests", "TaskRowPainterTest.*:FrmMainMarkTest.*"),
    ("cmd_tests", "RunCommandTest.TheExtensionAndThePathMayBeMissing"),
    ("save_loop_tests", "*"),
])
def test_a_test_program_finds_its_files_in_the_kit(kit, tmp_path, program, tests):
    made = subprocess.run(
        [str(SOURCE / "tests/under-wine"), str(kit / f"tests/{program}.exe"),
         f"--gtest_filter={tests}", "3"],
        check=False, cwd=tmp_path, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
        stderr=subprocess.DEVNULL, timeout=3 * DEADLINE)
    assert made.returncode == 0, made.stdout.decode(errors="replace")


@pytest.mark.parametrize("tests, code", [("Fake.Passes", 0), ("Fake.Passes:Fake.IsSkipped", 1)])
def test_under_wine_a_skipped_test_is_a_failure(tests, code):
    made = subprocess.run(
        [str(SOURCE / "tests/under-wine"), str(BINARIES / f"{FAKE}.exe"), f"--gtest_filter={tests}"],
        check=False, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
        stderr=subprocess.DEVNULL, timeout=DEADLINE)
    assert made.returncode == code
