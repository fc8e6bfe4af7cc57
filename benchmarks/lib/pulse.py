"""Sound servers of our own with a sink to nowhere, and a recorder that knows when its first sound was heard."""
import array
import os
import signal
import subprocess
import tempfile
import threading
import time

import process

RATE = 44100
FRAME = 4  # bytes: 16 bits, stereo
# What counts as audible: -60 dB of full scale. The idle sink gives exact zeros.
THRESHOLD = 33


class SoundServer:
    """A server of our own between `with` and its end, for players that find it by `environment`."""

    def __enter__(self):
        self._folder = tempfile.TemporaryDirectory(prefix="orvel-benchmark-pulse-")
        os.chmod(self._folder.name, 0o755)  # for the player that does not run as root
        self._socket = f"{self._folder.name}/{self.socket}"
        self.environment = {"PULSE_SERVER": f"unix:{self._socket}"}
        self._log = open(f"{self._folder.name}/log", "w+b")
        self.start()
        return self

    def __exit__(self, *_):
        self.kill(signal.SIGTERM)
        self._log.close()
        self._folder.cleanup()

    def kill(self, number=signal.SIGKILL):
        for pid in reversed(process.tree(self.pid)):
            os.kill(pid, number)
        self._process.wait()

    def start(self):
        """Anew, after a kill."""
        own = os.environ | {"HOME": self._folder.name, "XDG_RUNTIME_DIR": self._folder.name}
        for name in ("PULSE_SERVER", "DBUS_SESSION_BUS_ADDRESS", "DISPLAY"):
            own.pop(name, None)
        self._process = subprocess.Popen(self.command(self._socket), env=own, stdin=subprocess.DEVNULL, stdout=self._log,
                                         stderr=self._log, start_new_session=True)
        self.pid = self._process.pid
        while b"nowhere" not in self.pactl("info"):
            if self._process.poll() is not None:
                raise SystemExit(f"{self.name} does not start: " + open(self._log.name, errors="replace").read())
            time.sleep(0.05)
            self.prepare()

    def pactl(self, *arguments):
        return subprocess.run(["pactl", *arguments], env=os.environ | self.environment, capture_output=True).stdout

    def prepare(self):
        pass


class PulseServer(SoundServer):
    """PulseAudio with a sink to nowhere."""
    name, socket = "PulseAudio", "native"

    def command(self, socket):
        return ["pulseaudio", "-n", "--daemonize=no", "--use-pid-file=no", "--exit-idle-time=-1", "--high-priority=no",
                "-L", f"module-null-sink sink_name=nowhere rate={RATE} channels=2",
                "-L", f"module-native-protocol-unix auth-anonymous=1 socket={socket}"]


class PipeWireServer(SoundServer):
    """PipeWire with its session manager and its PulseAudio protocol, as a desktop has them, and a sink to nowhere."""
    name, socket = "PipeWire", "pulse/native"

    def command(self, socket):
        return ["dbus-run-session", "--", "sh", "-c", "pipewire & sleep 0.5; wireplumber & exec pipewire-pulse"]

    def prepare(self):
        if b"PipeWire" in self.pactl("info") and b"nowhere" not in self.pactl("list", "short", "sinks"):
            self.pactl("load-module", "module-null-sink", "sink_name=nowhere", "channels=2")
            self.pactl("set-default-sink", "nowhere")


class Recorder:
    """Records the sink. `first_sound` is the monotonic time at which the piece of the recording arrived that holds the first
    audible sample. The sink makes pieces of 5 ms just before they are due, so that this is off by 5 ms at most."""

    def __init__(self, server):
        self.first_sound = None
        self.heard = threading.Event()
        self.frames = 0
        self._armed = False
        self._process = subprocess.Popen(
            ["parec", "--latency-msec=5", "--raw", "--format=s16le", f"--rate={RATE}", "--channels=2", "-d", "nowhere.monitor"],
            env=os.environ | server.environment, stdout=subprocess.PIPE)
        threading.Thread(target=self._read, daemon=True).start()
        while self.frames < RATE // 5:
            time.sleep(0.02)

    def arm(self):
        """Listen for a first sound (again)."""
        self.first_sound = None
        self.heard.clear()
        self._armed = True

    def wait_for_silence(self):
        """Until nothing has been heard for 0.3 s."""
        while True:
            self.arm()
            if not self.heard.wait(0.3):
                return

    def _read(self):
        pipe = self._process.stdout.fileno()
        rest = b""
        while chunk := os.read(pipe, 65536):
            now = time.monotonic()
            chunk = rest + chunk
            whole = len(chunk) - len(chunk) % FRAME
            rest = chunk[whole:]
            self.frames += whole // FRAME
            if not self._armed:
                continue
            samples = array.array("h", chunk[:whole])
            if max(samples) > THRESHOLD or min(samples) < -THRESHOLD:
                self._armed = False
                self.first_sound = now
                self.heard.set()

    def end(self):
        self._process.terminate()
        self._process.wait()
