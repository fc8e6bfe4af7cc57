"""Sound for the station, made once and kept in build/benchmark/sounds."""
import subprocess
import sys
from pathlib import Path

from station import Sound

FOLDER = Path(__file__).resolve().parents[2] / "build/benchmark/sounds"
# Loud from the first sample to the last, so that the first sound heard is the first byte sent; noise, so that frames
# have something to hold.
MUSIC = ("aevalsrc='0.25*sin(2*PI*(220+55*floor(mod(t,4)))*t)+0.15*sin(2*PI*(523+87*floor(mod(2*t,5)))*t)"
         "|0.25*sin(2*PI*(220+55*floor(mod(t,4)))*t)+0.15*sin(2*PI*(659+99*floor(mod(3*t,7)))*t)':s=44100[tones];"
         "anoisesrc=r=44100:a=0.15:c=pink:seed=1,aformat=channel_layouts=stereo[noise];[tones][noise]amix=normalize=0")
KINDS = {
    "mp3": ("audio/mpeg", ["-c:a", "libmp3lame", "-b:a", "128k", "-write_xing", "0", "-id3v2_version", "0", "-f", "mp3"]),
    "aac": ("audio/aac", ["-c:a", "aac", "-b:a", "64k", "-f", "adts"]),
}
SECONDS = 120


def sounds():
    """The station's sounds: 128 kbit/s MP3 and 64 kbit/s AAC (ADTS, LC), 44.1 kHz stereo, whole frames."""
    FOLDER.mkdir(parents=True, exist_ok=True)
    made = {}
    for name, (content_type, options) in KINDS.items():
        path = FOLDER / f"sound.{name}"
        if not path.exists():
            print(f"encoding {path.name}", file=sys.stderr)
            partial = path.with_suffix(".partial")
            subprocess.run(["ffmpeg", "-v", "error", "-y", "-filter_complex", MUSIC, "-t", str(SECONDS), *options,
                            str(partial)], check=True, stdin=subprocess.DEVNULL)
            partial.rename(path)
        data = path.read_bytes()
        made[name] = Sound(content_type, data, len(data) / SECONDS)
    return made
