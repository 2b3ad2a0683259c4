"""A root certificate that only the Wine prefix trusts, and certificates of servers that it signs."""

import hashlib
import shutil
import struct
import subprocess

from desktop import run

ROOTS = r"HKLM\Software\Microsoft\SystemCertificates\Root\Certificates"
NO_ROOT = "no root certificate can be added: openssl or the right to write the prefix's roots is missing"
CERTIFICATE = 32  # the property of a stored certificate that is the certificate itself


def openssl(*arguments):
    return subprocess.run(["openssl", *[str(argument) for argument in arguments]], check=True,
                          stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.DEVNULL).stdout


def can_add_root():
    """Whether a `Root` can be made and trusted. Leaves nothing behind."""
    if not shutil.which("openssl"):
        return False
    probe = rf"{ROOTS}\{40 * '0'}"
    run("wine", "reg", "add", probe, "/v", "Probe", "/d", "1", "/f")
    is_there = "Probe" in run("wine", "reg", "query", probe)
    run("wine", "reg", "delete", probe, "/f")
    return is_there


class Root:
    """Trusted while the object is in use: an entry of the prefix's registry, so the host's own
    roots stay as they are."""

    def __init__(self, folder):
        self.folder = folder
        self.key, self.file = folder / "root.key", folder / "root.pem"
        openssl("req", "-x509", "-newkey", "rsa:2048", "-nodes", "-keyout", self.key,
                "-out", self.file, "-days", "2", "-subj", "/CN=Tellurvane test root",
                "-addext", "basicConstraints=critical,CA:TRUE",
                "-addext", "keyUsage=critical,keyCertSign,cRLSign")

    def sign(self, *hosts):
        """A certificate for these hosts, and its key."""
        key, request, certificate, extensions = (
            self.folder / f"{hosts[0]}.{kind}" for kind in ("key", "csr", "pem", "cnf"))
        openssl("req", "-newkey", "rsa:2048", "-nodes", "-keyout", key, "-out", request,
                "-subj", f"/CN={hosts[0]}")
        names = ",".join(f"DNS:{host}" for host in hosts)
        extensions.write_text(f"subjectAltName={names}\nbasicConstraints=CA:FALSE\n"
                              "extendedKeyUsage=serverAuth\n")
        openssl("x509", "-req", "-in", request, "-CA", self.file, "-CAkey", self.key,
                "-CAcreateserial", "-days", "2", "-extfile", extensions, "-out", certificate)
        return certificate, key

    def __enter__(self):
        der = openssl("x509", "-in", self.file, "-outform", "DER")
        blob = struct.pack("<III", CERTIFICATE, 1, len(der)) + der
        self.entry = rf"{ROOTS}\{hashlib.sha1(der).hexdigest().upper()}"
        run("wine", "reg", "add", self.entry, "/v", "Blob", "/t", "REG_BINARY", "/d", blob.hex(),
            "/f")
        assert "Blob" in run("wine", "reg", "query", self.entry)
        return self

    def __exit__(self, *_):
        run("wine", "reg", "delete", self.entry, "/f")
