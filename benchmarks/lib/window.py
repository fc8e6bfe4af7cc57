"""The client's window off the screen, and the station it shows."""
import contextlib
import os
import subprocess
import tempfile
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
BUILD = ROOT / os.environ.get("ORVEL_BENCHMARK_BUILD", "build/benchmark") / "benchmarks"


@contextlib.contextmanager
def home():
    """The environment of a program that finds nothing of an earlier run in its home."""
    with tempfile.TemporaryDirectory() as folder:
        yield os.environ | {"QT_QPA_PLATFORM": "offscreen", "QT_QUICK_BACKEND": "software", "HOME": folder,
                            "XDG_CONFIG_HOME": folder, "XDG_CACHE_HOME": folder, "XDG_DATA_HOME": folder}


class Station:
    """orvel-bench-station between `with` and its end; `lines` is what it prints meanwhile, `streams` the address of its
    streams but for their numbers."""

    def __init__(self, *arguments):
        self.process = subprocess.Popen([str(part) for part in (BUILD / "window/orvel-bench-station", *arguments)],
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        self.lines = self.process.stdout
        self.url, _, self.streams = self.lines.readline().strip().partition(" ")

    def end(self):
        """What it printed that nobody has read."""
        if not self.process.stdin.closed:
            self.process.stdin.close()
        rest = self.lines.read() if not self.lines.closed else ""
        self.lines.close()
        self.process.wait()
        return rest

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.end()


def quantile(values, part):
    return sorted(values)[min(len(values) - 1, int(len(values) * part))]
