"""Sound: made as files, and recorded from the sink that the program plays into."""

import array
import ctypes
import math
import subprocess

from desktop import run, until

SINK = "tellurvane"  # the sound sink of the virtual desktop, which nobody hears
RATE = 22_050
LOW, HIGH = 440, 1_320  # hertz


def make_wav(path, seconds, *tones):
    """Tones one after another, each with this length."""
    parts = []
    for number, tone in enumerate(tones):
        part = path.with_suffix(f".{number}.wav")
        run("sox", "-n", "-r", 44_100, "-c", 1, "-b", 16, part, "synth", seconds, "sine", tone,
            "gain", -6)
        parts.append(part)
    run("sox", *parts, path)
    for part in parts:
        part.unlink()
    assert path.stat().st_size > 44_100 * 2 * seconds * len(tones) * 0.99
    return path


def make_mp3(path, wav):
    """The same sound, written by the encoder that came with the system's decoders."""
    lame = ctypes.CDLL("libmp3lame.so.0")
    lame.lame_init.restype = ctypes.c_void_p
    encoder = ctypes.c_void_p(lame.lame_init())
    lame.lame_set_in_samplerate(encoder, 44_100)
    lame.lame_set_num_channels(encoder, 1)
    lame.lame_set_mode(encoder, 3)
    assert lame.lame_init_params(encoder) >= 0
    data = wav.read_bytes()
    samples = data[data.index(b"data") + 8:]
    count = len(samples) // 2
    buffer = ctypes.create_string_buffer(count * 2 + 7_200)
    written = lame.lame_encode_buffer(encoder, samples, None, count, buffer, len(buffer))
    assert written > 0
    path.write_bytes(buffer.raw[:written])
    written = lame.lame_encode_flush(encoder, buffer, len(buffer))
    with path.open("ab") as file:
        file.write(buffer.raw[:written])
    lame.lame_close(encoder)
    return path


class Ear:
    """Records the sound of the programs on this desktop."""

    def __init__(self, path):
        self.path = path
        with path.open("wb") as file:
            self.process = subprocess.Popen(
                ["parec", "-d", f"{SINK}.monitor", "--raw", "--format=s16le", f"--rate={RATE}",
                 "--channels=1", "--latency-msec=40"],
                stdin=subprocess.DEVNULL, stdout=file, stderr=subprocess.DEVNULL)
        until(lambda: path.stat().st_size > 0, "a first sound, if only silence")

    def close(self):
        self.process.kill()
        self.process.wait()

    def _latest(self, seconds):
        """The latest samples, all of them heard from now on."""
        size = 2 * int(RATE * seconds)
        begun = self.path.stat().st_size // 2 * 2
        until(lambda: self.path.stat().st_size >= begun + size, "sound, if only silence")
        with self.path.open("rb") as file:
            file.seek(begun)
            samples = array.array("h")
            samples.frombytes(file.read(size))
        return samples

    def levels(self, *tones, seconds=0.2):
        """How loud each tone is, from 0 to 1."""
        samples = self._latest(seconds)
        levels = []
        for tone in tones:
            factor = 2 * math.cos(2 * math.pi * tone / RATE)
            before = latest = 0.0
            for sample in samples:
                before, latest = latest, sample + factor * latest - before
            power = before * before + latest * latest - factor * before * latest
            levels.append(2 * math.sqrt(max(power, 0)) / len(samples) / 32_768)
        return levels

    def level(self, tone):
        return self.levels(tone, seconds=0.3)[0]

    def hears(self, tone):
        """Whether it is this of the two tones, clearly."""
        levels = dict(zip((LOW, HIGH), self.levels(LOW, HIGH)))
        wanted = levels.pop(tone)
        other, = levels.values()
        return wanted > 0.01 and wanted > 5 * other

    def hears_nothing(self):
        return max(self._latest(0.3), key=abs) == 0
