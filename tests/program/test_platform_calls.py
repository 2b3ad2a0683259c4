"""Whether every function of the platform that the program calls is refused by a test, or stands here
with the reason why it is not."""

import re
import subprocess
from pathlib import Path

from harness import BINARIES

ROOT = Path(__file__).resolve().parents[2]
EXECUTABLE = BINARIES / "Tellurvane.exe"
# Gives, refused: how often each of them fails in the tests' deeds.
REFUSED = ROOT / "tests" / "support" / "PlatformCalls.cpp"
# Those that are bound at the first call stand in no table that a tool prints.
BOUND_LATER = ROOT / "cmake"

# Why nobody refuses them, and whom they concern.
NOT_REFUSED = {
    "a test of its own refuses it, because the deeds do it once only or not at all": """
        CreatePipe CreateProcessW GdipGetGenericFontFamilySansSerif GdiplusStartup
        GetCurrentDirectoryW GetDeviceCaps GetOpenFileNameW LoadLibraryW RegSetKeyValueW
        RegisterWindowMessageW SetCurrentDirectoryW SetHandleInformation""",
    "gives something back: where that fails, nothing can be done": """
        CloseClipboard CloseHandle CoUninitialize DeleteDC DeleteObject DestroyIcon DestroyMenu DestroyWindow
        EndPaint FreeLibrary GdipDeleteBrush GdipDeleteFont GdipDeleteFontFamily GdipDeleteGraphics
        GdipFree GdiplusShutdown GlobalUnlock ImageList_Destroy KillTimer RegCloseKey ReleaseCapture ReleaseDC
        ReleaseMutex SysFreeString UnregisterClassW VariantClear VirtualFree""",
    "removes a file that is done with: one that stays is the next save's to write over": """
        DeleteFileW""",
    "cannot fail, or its failure is one of its usual answers": """
        CompareStringOrdinal ExitProcess GetACP GetActiveWindow GetAncestor GetCapture GetFocus
        GetForegroundWindow
        GetKeyState GetLastError GetLocalTime GetModuleHandleW GetSysColor GetTickCount64 GetWindow
        GlobalSize
        InitCommonControls IsChild IsDialogMessageW IsIconic IsWindow IsWindowEnabled
        IsWindowVisible MonitorFromWindow MulDiv PathFileExistsW PeekMessageW PostQuitMessage
        PtInRect SetLastError Sleep SysStringLen TranslateMessage VariantInit lstrcpynW""",
    "a window that does not come to the front can be clicked": """
        SetForegroundWindow""",
    "without a dialog that was found the window itself is meant": """
        EnumThreadWindows""",
    "where the system has no such thing, a busy window looks as if it hung": """
        DisableProcessWindowsGhosting""",
    "fails only for a window that is gone": """
        CallWindowProcW ClientToScreen DefWindowProcW DispatchMessageW EnableWindow GetMessageW
        GetWindowLongPtrW GetWindowThreadProcessId InvalidateRect MapWindowPoints RedrawWindow
        ScreenToClient SendMessageW SetActiveWindow SetCapture SetCursor SetFocus ShowWindow
        UpdateWindow""",
    "comes after a refusal only, or in a locale that has no Chinese, and is drawing": """
        GetBitmapBits GetTextMetricsW PatBlt TextOutW""",
    "a box that does not come up has been answered with no": """
        MessageBoxW""",
    "where the system has no such thing, its own order of searching holds": """
        SetDefaultDllDirectories""",
    "the name of a face that was found; an empty one is as good as none, which is tried": """
        GdipGetFamilyName""",
    "called by the platform's own classes for what they have just made": """
        GdipAlloc GdipCloneBrush""",
    "asks for what only one system has, and takes none for an answer": """
        GetProcAddress""",
    # Its memory runs out in the tests, by the operators new.
    "the runtime library's own: start, threads, exceptions, binding at the first call": """
        AddVectoredExceptionHandler CreateEventA CreateSemaphoreA CryptAcquireContextA
        CryptGenRandom CryptReleaseContext DeleteCriticalSection DuplicateHandle
        EnterCriticalSection GetCurrentProcess GetCurrentProcessId GetCurrentThread
        GetCurrentThreadId GetHandleInformation GetProcessAffinityMask GetStartupInfoW
        GetSystemTimeAsFileTime GetThreadContext GetThreadPriority InitializeCriticalSection
        IsDBCSLeadByteEx IsDebuggerPresent LeaveCriticalSection LoadLibraryA LocalAlloc LocalFree
        OpenProcess OutputDebugStringA RaiseException ReleaseSemaphore
        RemoveVectoredExceptionHandler ResetEvent ResumeThread RtlCaptureContext
        RtlLookupFunctionEntry RtlUnwindEx RtlVirtualUnwind SetEvent SetNamedPipeHandleState
        SetProcessAffinityMask SetThreadContext SetThreadPriority
        SetUnhandledExceptionFilter SuspendThread TlsAlloc TlsGetValue TlsSetValue
        TryEnterCriticalSection VirtualProtect VirtualQuery WaitForMultipleObjects
        WaitForSingleObject __C_specific_handler""",
}
# The C library: texts and numbers in memory, and the start and the end of the program.
WHOLE_LIBRARIES = {"msvcrt.dll"}


def imports():
    """The functions that the executable names, those of the whole libraries left out."""
    text = subprocess.run(["objdump", "-p", str(EXECUTABLE)], check=True, stdout=subprocess.PIPE,
                          stderr=subprocess.DEVNULL).stdout.decode()
    library, names = None, set()
    for line in text.splitlines():
        if found := re.match(r"\s*DLL Name: (\S+)", line):
            library = found[1].lower()
        elif (found := re.match(r"\t[0-9a-f]+\t\s*\d+\s+(\w+)", line)) and library:
            if library not in WHOLE_LIBRARIES:
                names.add(found[1])
    return names


def bound_later():
    image = EXECUTABLE.read_bytes()
    names = set()
    for definition in BOUND_LATER.glob("*.def"):
        lines = definition.read_text(encoding="utf-8").split("EXPORTS\n")[1].split()
        names |= {name for name in lines if b"\0" + name.encode() + b"\0" in image}
    return names


def called():
    return imports() | bound_later()


def refused():
    return set(re.findall(r'\{\{"(\w+)"', REFUSED.read_text(encoding="utf-8")))


def excused():
    return [name for names in NOT_REFUSED.values() for name in names.split()]


def test_the_imports_are_seen():
    assert {"CreateWindowExW", "BitBlt", "CloseHandle"} <= imports()
    assert {"GdiplusStartup", "Shell_NotifyIconW", "GetOpenFileNameW"} <= bound_later()


def test_every_call_is_refused_or_has_its_reason():
    assert sorted(called() - refused() - set(excused())) == []


def test_nothing_is_refused_or_excused_that_is_not_called():
    assert sorted(refused() - called()) == []
    assert sorted(set(excused()) - called()) == []


def test_each_stands_once():
    assert len(excused()) == len(set(excused()))
    assert sorted(refused() & set(excused())) == []


def test_those_with_a_test_of_their_own_have_it():
    own = next(iter(NOT_REFUSED.values())).split()
    texts = [path.read_text(encoding="utf-8") for path in ROOT.glob("tests/*/*_test.cpp")]
    assert [name for name in own if not any(f'"{name}"' in text for text in texts)] == []
