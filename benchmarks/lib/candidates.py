"""The players that are compared: how each is started on a silent output, or on a PulseAudio server."""
import os
import shlex
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
BUILD = Path(os.environ.get("ORVEL_BENCHMARK_BUILD", ROOT / "build/benchmark"))
NOBODY = 65534


class Candidate:
    """`command` may hold {url}; `silent` and `pulse` are what it needs to play to nowhere, or to PULSE_SERVER."""
    formats = ("mp3", "aac")

    def __init__(self, name, command, silent=(), pulse=(), silent_env=None, pulse_env=None, **more):
        self.name, self.command, self.options = name, command, {"silent": silent, "pulse": pulse}
        self.environments = {"silent": silent_env or {}, "pulse": pulse_env or {}}
        self.__dict__.update(more)

    def arguments(self, url, output, sound):
        out = []
        for word in self.command:
            if word == "{output}":
                out += self.options[output]
            elif word == "{decoder}":
                out += self.decoders[sound]
            else:
                out.append(word.replace("{url}", url))
        return out

    def start(self, url, output, sound, environment=None):
        env = {"PATH": os.environ["PATH"], "LANG": "C.UTF-8", "LC_ALL": "C.UTF-8"}
        env |= self.environments[output] | (environment or {})
        return Running(self.arguments(url, output, sound), env, user=getattr(self, "user", None))

    def is_there(self):
        return shutil.which(self.command[0]) is not None


class Running:
    """A started player with a home of its own."""

    def __init__(self, arguments, env, user=None):
        self.home = tempfile.TemporaryDirectory(prefix="orvel-benchmark-")
        if os.geteuid() != 0:
            user = None
        elif user:
            os.chown(self.home.name, user, user)
        env = env | {"HOME": self.home.name, "XDG_RUNTIME_DIR": self.home.name}
        self.log = open(Path(self.home.name) / "log", "w+b")
        self.started = time.monotonic()
        self.process = subprocess.Popen(arguments, env=env, user=user, cwd=self.home.name, stdin=subprocess.DEVNULL,
                                        stdout=self.log, stderr=self.log, start_new_session=True)
        self.pid = self.process.pid

    def is_running(self):
        return self.process.poll() is None

    def text(self):
        return (Path(self.home.name) / "log").read_text(errors="replace")

    def end(self):
        for signal_number in (signal.SIGTERM, signal.SIGKILL):
            if self.is_running():
                self.process.send_signal(signal_number)
            try:
                self.process.wait(timeout=4)
                break
            except subprocess.TimeoutExpired:
                pass
        self.log.close()
        self.home.cleanup()


class Mpd(Candidate):
    """A daemon that is told what to play over its socket."""

    OUTPUTS = {"silent": 'type "null"\n name "null"\n sync "yes"', "pulse": 'type "pulse"\n name "pulse"'}

    def start(self, url, output, sound, environment=None):
        folder = tempfile.TemporaryDirectory(prefix="orvel-benchmark-mpd-")
        config, commands = f"{folder.name}/mpd.conf", f"{folder.name}/socket"
        Path(config).write_text(f'bind_to_address "{commands}"\nlog_file "/dev/stderr"\ninput {{\n plugin "curl"\n}}\n'
                                f"audio_output {{\n {self.OUTPUTS[output]}\n}}\n")
        running = super().start(config, output, sound, environment)
        running.folder = folder
        with socket.socket(socket.AF_UNIX) as control:
            while control.connect_ex(commands) != 0:
                if not running.is_running():
                    return running
                time.sleep(0.001)
            control.sendall(f'add "{url}"\nplay\n'.encode())
            answer = b""
            while answer.count(b"OK\n") < 2 and b"ACK" not in answer and (more := control.recv(4096)):
                answer += more
        return running


def ours():
    """Given as a command with {url} in ORVEL_PLAYER, or the tool as it was built."""
    return shlex.split(os.environ.get("ORVEL_PLAYER", f"{BUILD}/tools/stream/orvel-stream play {{url}}"))


def candidates():
    gst_decoders = {"mp3": "mpegaudioparse ! mpg123audiodec".split(), "aac": "aacparse ! faad".split()}
    return [
        Candidate("orvel-stream", ours(), silent_env={"ORVEL_AUDIO_DEVICE": "null"}),
        # Its silent output does not wait: it decodes what comes when it comes, in real time after the burst.
        Candidate("mpg123", ["mpg123", "-q", "{output}", "{url}"], silent=("-o", "dummy"), pulse=("-o", "pulse"),
                  formats=("mp3",)),
        Candidate("GStreamer", ["gst-launch-1.0", "-q", "souphttpsrc", "iradio-mode=true", "location={url}", "!",
                                "icydemux", "!", "{decoder}", "!", "audioconvert", "!", "audioresample", "!", "{output}"],
                  silent=("fakesink", "sync=true"), pulse=("pulsesink",), decoders=gst_decoders),
        Mpd("MPD", ["mpd", "--no-daemon", "--stderr", "{url}"]),
        Candidate("VLC", ["cvlc", "-q", "--no-video", "--no-dbus", "{output}", "{url}"], silent=("--aout=adummy",),
                  pulse=("--aout=pulse",), user=NOBODY),
        Candidate("mpv", ["mpv", "--no-config", "--no-terminal", "--vo=null", "{output}", "{url}"], silent=("--ao=null",),
                  pulse=("--ao=pulse",)),
        Candidate("ffplay", ["ffplay", "-nodisp", "-loglevel", "error", "{url}"], silent_env={"SDL_AUDIODRIVER": "dummy"},
                  pulse_env={"SDL_AUDIODRIVER": "pulseaudio"}),
        # What reading alone costs.
        Candidate("curl to nowhere", ["curl", "-s", "-H", "Icy-Metadata: 1", "-o", "/dev/null", "{url}"], silent_only=True),
        # What orvel-stream's libraries take before anything is done: the floor of its memory.
        Candidate("orvel's libraries, idle", [str(BUILD / "benchmarks/players/orvel-bench-libraries")], silent_only=True),
    ]


def chosen(only, output="silent"):
    """Those whose names begin with one of the comma-separated texts, or all; without what is not there."""
    found = candidates()
    if output != "silent":
        found = [one for one in found if not getattr(one, "silent_only", False)]
    if only:
        texts = only.lower().split(",")
        found = [one for one in found if any(one.name.lower().startswith(text) for text in texts)]
    for one in found:
        if not one.is_there():
            print(f"{one.name} left out: {one.command[0]} is not there", file=sys.stderr)
    return [one for one in found if one.is_there()]
