"""The servers of Radio Browser on this machine: a proxy that answers CONNECT and speaks TLS as the
host that was asked for.

What a server does with a connection is a function of a `Link`. Every byte of a request is kept.

Two things cannot be tried under Wine through a proxy: when a server hangs up during the TLS
handshake, an assertion of Wine's library ends the process; when it hangs up before the first line of
its answer, that library asks it again for ever. Without a proxy both are ordinary failures.
"""

import socket
import ssl
import threading

NAMES = ("all", "de1", "de2", "fi1")
DOMAIN = ".api.radio-browser.info"
CLIENT_GONE = (OSError, ssl.SSLError)


class Link:
    """A connection of the program to one of the servers."""

    def __init__(self, servers, connection, certificate):
        self.servers, self.stream, self.certificate = servers, connection, certificate

    def accept(self):
        """The tunnel is open from here."""
        self.stream.sendall(b"HTTP/1.1 200 Connection established\r\n\r\n")

    def secure(self, certificate=None):
        """Accepts, and speaks TLS from here."""
        self.accept()
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        context.load_cert_chain(*(certificate or self.certificate))
        self.stream = context.wrap_socket(self.stream, server_side=True)

    def receive(self):
        """Takes the request."""
        self.secure()
        self.servers.requests.append(read_head(self.stream))

    def stay_silent(self):
        self.servers.spoken.wait(60)

    def drip(self, data):
        """A byte each half second."""
        for byte in data:
            if self.servers.spoken.wait(0.5):
                return
            self.stream.sendall(bytes([byte]))


def read_head(stream):
    taken = b""
    while b"\r\n\r\n" not in taken:
        more = stream.recv(4096)
        if not more:
            break
        taken += more
    return taken


def answers(answer):
    def act(link):
        link.receive()
        link.stream.sendall(answer.head() + answer.body)
    return act


def opens_no_tunnel(link):
    link.stream.sendall(b"HTTP/1.1 502 Bad Gateway\r\nContent-Length: 0\r\n\r\n")


def sends_without_length(body):
    def act(link):
        link.receive()
        link.stream.sendall(b"HTTP/1.1 200 OK\r\nContent-Type: text/xml\r\n\r\n" + body)
    return act


def hangs_up(link):
    link.receive()
    link.stream.sendall(b"HTTP/1.1 200 OK\r\n")


def hangs_up_as_proxy(_):
    pass


def shows(certificate):
    """Speaks TLS with another certificate."""
    def act(link):
        link.secure(certificate)
        link.servers.requests.append(read_head(link.stream))
    return act


def is_silent(link):
    link.receive()
    link.stay_silent()


def is_silent_as_proxy(link):
    link.stay_silent()


def is_silent_before_tls(link):
    link.accept()
    link.stay_silent()


def drips_head(link):
    link.receive()
    link.drip(b"HTTP/1.1 200 OK\r\nX: " + b"y" * 100)


def drips_body(link):
    link.receive()
    link.stream.sendall(b"HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n")
    link.drip(b" " * 100)


class RadioServers:
    """All of them do the same until a test says otherwise for one."""

    def __init__(self, certificate):
        self.certificate = certificate
        self.spoken = threading.Event()
        self.forget()
        self.listener = socket.create_server(("127.0.0.1", 0))
        self.port = self.listener.getsockname()[1]
        threading.Thread(target=self._listen, args=(self.listener,), daemon=True).start()

    def close(self):
        """Listens no more, and ends every silence."""
        self.spoken.set()
        # Wakes the thread that waits for a connection.
        self.listener.shutdown(socket.SHUT_RDWR)
        self.listener.close()

    def forget(self):
        # The requests inside the tunnels, what the proxy was sent, and the hosts in their order.
        self.requests, self.tunnels, self.asked = [], [], []
        self.acts, self.all_do = {}, opens_no_tunnel

    def do(self, act, *names):
        """What the named servers do, or all of them."""
        if names:
            self.acts |= dict.fromkeys(names, act)
        else:
            self.acts, self.all_do = {}, act

    def take_asked(self):
        """The servers that were asked since the last time."""
        asked, self.asked = self.asked, []
        return asked

    def _listen(self, listener):
        while True:
            try:
                connection, _ = listener.accept()
            except OSError:
                return
            threading.Thread(target=self._serve, args=(connection,), daemon=True).start()

    def _serve(self, connection):
        link = Link(self, connection, self.certificate)
        try:
            tunnel = read_head(connection)
            if not tunnel:
                return
            self.tunnels.append(tunnel)
            host = tunnel.split(b" ")[1].decode().removesuffix(":443")
            name = host.removesuffix(DOMAIN)
            self.asked.append(name)
            self.acts.get(name, self.all_do)(link)
        except CLIENT_GONE:
            pass
        finally:
            link.stream.close()
