"""A local station for measuring: plays encoded sound in a loop to any number of listeners and writes down when it sent
what.

http://127.0.0.1:PORT/mp3?burst=BYTES&titles=SECONDS: so many bytes at once (none unless asked for), then 1,400 at a time,
as Icecast sends them, at the sound's own pace. Listeners that ask for metadata get it every 16,000 bytes; with titles=N
it names a new title whenever N seconds of sound have passed since the last.
"""
import asyncio
import contextlib
import threading
import time
import urllib.parse

PIECE = 1400
INTERVAL = 16000


class Sound:
    def __init__(self, content_type, data, bytes_per_second):
        self.content_type, self.data, self.bytes_per_second = content_type, data, bytes_per_second

    def at(self, position, size):
        """`size` bytes of the endless loop from `position` on."""
        start = position % len(self.data)
        piece = self.data[start:start + size]
        while len(piece) < size:
            piece += self.data[:size - len(piece)]
        return piece


class Listener:
    """What one request got. Times are of the monotonic clock, bytes of sound without metadata."""

    def __init__(self, port, path):
        self.port, self.path = port, path
        self.asked = time.monotonic()
        self.sends = []  # (when, sound sent with it and before it)

    @property
    def sent(self):
        return self.sends[-1][1] if self.sends else 0

    def when(self, sound_bytes):
        """When the station began to send the piece with the byte of that number; None if it has not."""
        return next((moment for moment, total in self.sends if total >= sound_bytes), None)


class Framing:
    """Metadata after each INTERVAL bytes of sound."""

    def __init__(self, bytes_per_title):
        self.until_block, self.passed = INTERVAL, 0
        self.bytes_per_title, self.next_title, self.number = bytes_per_title, INTERVAL, 0

    def framed(self, sound):
        out = bytearray()
        while sound:
            piece, sound = sound[:self.until_block], sound[self.until_block:]
            out += piece
            self.passed += len(piece)
            self.until_block -= len(piece)
            if self.until_block == 0:
                out += self.block()
                self.until_block = INTERVAL
        return bytes(out)

    def block(self):
        if not self.bytes_per_title or self.passed < self.next_title:
            return b"\0"
        self.next_title += self.bytes_per_title
        self.number += 1
        text = f"StreamTitle='Artist {self.number % 7} - Song number {self.number}';".encode()
        return bytes([-(-len(text) // 16)]) + text.ljust(-(-len(text) // 16) * 16, b"\0")


class Station:
    """Runs in a thread of its own between `with` and its end. `sounds` by the name in the path."""

    def __init__(self, sounds):
        self.sounds, self.listeners = sounds, []
        self._loop = asyncio.new_event_loop()
        self._tasks = set()

    def __enter__(self):
        started = threading.Event()
        self._thread = threading.Thread(target=self._run, args=(started,), daemon=True)
        self._thread.start()
        started.wait()
        return self

    def __exit__(self, *_):
        self._loop.call_soon_threadsafe(self._loop.stop)
        self._thread.join()

    def url(self, sound, **query):
        text = urllib.parse.urlencode(query)
        return f"http://127.0.0.1:{self.port}/{sound}" + (f"?{text}" if text else "")

    def _run(self, started):
        async def listen():
            server = await asyncio.start_server(self._serve, "127.0.0.1", 0)
            self.port = server.sockets[0].getsockname()[1]
            started.set()

        self._loop.run_until_complete(listen())
        self._loop.run_forever()
        for task in asyncio.all_tasks(self._loop):
            task.cancel()
        self._loop.run_until_complete(asyncio.sleep(0))

    async def _serve(self, reader, writer):
        with contextlib.suppress(ConnectionError, asyncio.IncompleteReadError, asyncio.CancelledError):
            await self._answer(reader, writer)
        writer.close()

    async def _answer(self, reader, writer):
        head = (await reader.readuntil(b"\r\n\r\n")).decode("latin-1").split("\r\n")
        target = head[0].split(" ")[1]
        wants_metadata = any(line.lower().replace(" ", "") == "icy-metadata:1" for line in head[1:])
        parts = urllib.parse.urlsplit(target)
        query = dict(urllib.parse.parse_qsl(parts.query))
        sound = self.sounds.get(parts.path.strip("/"))
        if sound is None:
            writer.write(b"HTTP/1.0 404 Not Found\r\nContent-Length: 0\r\n\r\n")
            return
        listener = Listener(writer.get_extra_info("peername")[1], target)
        self.listeners.append(listener)
        answer = (f"HTTP/1.0 200 OK\r\nConnection: close\r\nContent-Type: {sound.content_type}\r\nicy-name: Benchmark\r\n"
                  f"icy-br: {round(sound.bytes_per_second / 125)}\r\n")
        framing = None
        if wants_metadata:
            answer += f"icy-metaint: {INTERVAL}\r\n"
            framing = Framing(float(query.get("titles", 0)) * sound.bytes_per_second)
        writer.write((answer + "\r\n").encode())
        await self._play(writer, sound, framing, listener, int(query.get("burst", 0)))

    async def _play(self, writer, sound, framing, listener, burst):
        begin, position = time.monotonic(), 0
        size = burst or PIECE
        while True:
            piece = sound.at(position, size)
            position += size
            before = time.monotonic()
            writer.write(framing.framed(piece) if framing else piece)
            await writer.drain()
            listener.sends.append((before, position))
            size = PIECE
            await asyncio.sleep(begin + (position + size - burst) / sound.bytes_per_second - time.monotonic())
