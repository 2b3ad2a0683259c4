"""The radio directories on this machine: a server that the prefix has as its proxy.

Every request is kept byte for byte.
"""

import socket
import threading
from http.server import BaseHTTPRequestHandler, ThreadingHTTPServer

from desktop import run

PROXY = r"HKCU\Software\Microsoft\Windows\CurrentVersion\Internet Settings"
# Needs no name server: labels of more than 63 characters do not exist.
NO_HOST = "n" * 70 + ".invalid"


class Answer:
    """An answer to a request: correct, or wrong on purpose."""

    def __init__(self, body="", status="200 OK", kind="text/html; charset=utf-8", headers=(),
                 length=None, silence=None):
        self.body = body if isinstance(body, bytes) else body.encode("utf-8")
        self.status, self.kind, self.headers = status, kind, headers
        self.length = len(self.body) if length is None else length
        self.silence = silence  # returns when the answer may be sent

    def head(self):
        lines = [f"HTTP/1.1 {self.status}", f"Content-Length: {self.length}", "Connection: close",
                 *([f"Content-Type: {self.kind}"] if self.kind else []), *self.headers]
        return "\r\n".join([*lines, "", ""]).encode("ascii")


class _Reader:
    """Keeps what is read through it."""

    def __init__(self, file):
        self.file, self.taken = file, b""

    def readline(self, *limit):
        line = self.file.readline(*limit)
        self.taken += line
        return line

    def close(self):
        self.file.close()


class _Handler(BaseHTTPRequestHandler):
    def setup(self):
        super().setup()
        self.rfile = _Reader(self.rfile)

    def do_GET(self):
        self.close_connection = True
        directories = self.server.directories
        answer = directories.answer_for(self.rfile.taken)
        if answer.silence:
            answer.silence()
        try:
            self.wfile.write(answer.head() + answer.body)
        except OSError:
            pass  # the other side has gone

    def log_message(self, *arguments):
        pass


class Directories:
    """The server. Answers are chosen by the beginning of a request's address."""

    def __init__(self):
        self.requests, self.answers = [], {}
        self.port = None
        self.server = None
        self.open()

    def open(self):
        """Listens, on the port of the first time."""
        self.server = ThreadingHTTPServer(("127.0.0.1", self.port or 0), _Handler)
        self.server.daemon_threads = True
        self.server.directories = self
        self.port = self.server.server_port
        threading.Thread(target=self.server.serve_forever, args=(0.05,), daemon=True).start()

    def close(self):
        """Listens no more."""
        self.server.shutdown()
        self.server.server_close()
        with socket.socket() as client:
            assert client.connect_ex(("127.0.0.1", self.port)) != 0

    def answer_for(self, request):
        self.requests.append(request)
        address = request.split(b" ", 2)[1].decode("latin-1").replace(":80/", "/", 1)
        known = [prefix for prefix in self.answers if address.startswith(prefix)]
        return self.answers[max(known, key=len)] if known else Answer("none", "502 Bad Gateway")

    def serves(self, prefix, answer):
        self.answers[prefix] = answer if isinstance(answer, Answer) else Answer(answer)

    def forget(self):
        self.requests, self.answers = [], {}


def _proxy_values():
    text = run("wine", "reg", "query", PROXY)
    values = {}
    for line in text.splitlines():
        parts = line.split(None, 2)
        if parts and parts[0] in ("ProxyEnable", "ProxyServer"):
            values[parts[0]] = (parts[1], parts[2] if len(parts) > 2 else "")
    return values


def _set(values):
    for name in ("ProxyEnable", "ProxyServer"):
        if name in values:
            kind, value = values[name]
            run("wine", "reg", "add", PROXY, "/v", name, "/t", kind, "/d", value, "/f")
        else:
            run("wine", "reg", "delete", PROXY, "/v", name, "/f")


class Proxy:
    """Sets a proxy for every host while the object is in use, and the old one after that."""

    def __init__(self, address):
        self.wanted = {"ProxyEnable": ("REG_DWORD", "1"), "ProxyServer": ("REG_SZ", address)}

    def __enter__(self):
        self.before = _proxy_values()
        _set(self.wanted)
        now = _proxy_values()
        assert now["ProxyServer"][1] == self.wanted["ProxyServer"][1], now
        assert int(now["ProxyEnable"][1], 16) == 1, now

    def __exit__(self, *_):
        _set(self.before)
