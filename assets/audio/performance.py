"""Plays a piece with FluidSynth and stores it as data/music/NAME.ogg, so that its end runs into its beginning.

The piece is played twice and a little further, and its second round is cut out: it begins with what rings over from
the first. The first hundredths of a second are blended with those of the third round, since the cut is one between
two rounds that differ in the last digits.
"""

import pathlib
import subprocess
import tempfile
import wave

import numpy as np

from lib import loudness, wav

MUSIC = wav.SOUNDS.parent / "music"
SOUND_FONT = "/usr/share/sounds/sf2/FluidR3_GM.sf2"
ROOM = {"room-size": 0.7, "damp": 0.35, "level": 0.55, "width": 0.8}
LEVEL = -20.0  # LUFS: water lies above it
KNEE, CEILING = 0.30, 0.42  # full scale 1: above the knee peaks are bent, and none reaches the ceiling, -7.5 dB
BLEND = 0.03  # seconds
BEATS_BEYOND = 8  # of the third round, for the blend
QUALITY = "4"


def play(piece):
    """What FluidSynth makes of the piece, repeated: (samples, 2), full scale 1."""
    with tempfile.TemporaryDirectory() as folder:
        notes, played = pathlib.Path(folder) / "notes.mid", pathlib.Path(folder) / "played.wav"
        piece.write(notes, 2 * piece.beats + BEATS_BEYOND)
        room = [word for name, value in ROOM.items() for word in ("-o", f"synth.reverb.{name}={value}")]
        subprocess.run(["fluidsynth", "-ni", "-q", "-r", str(wav.RATE), "-g", "1.0", "-C", "0", "-R", "1", *room,
                        "-F", str(played), SOUND_FONT, str(notes)], check=True, stdout=subprocess.DEVNULL)
        with wave.open(str(played), "rb") as file:
            samples = np.frombuffer(file.readframes(file.getnframes()), "<i2")
    return samples.reshape(-1, 2) / (wav.FULL_SCALE + 1)


def round_trip(played, seconds):
    """The second round, its beginning blended with that of the third."""
    count, blend = round(seconds * wav.RATE), round(BLEND * wav.RATE)
    middle = played[count : 2 * count].copy()
    share = np.linspace(0, 1, blend)[:, None]
    middle[:blend] = share * middle[:blend] + (1 - share) * played[2 * count : 2 * count + blend]
    return middle


def bend_peaks(sound):
    above = np.maximum(np.abs(sound) - KNEE, 0) / (CEILING - KNEE)
    return np.where(above > 0, np.sign(sound) * (KNEE + (CEILING - KNEE) * np.tanh(above)), sound)


def encode(path, sound):
    """Stores (samples, 2) as Vorbis, without date and version: the same sound gives the same bytes."""
    path.parent.mkdir(parents=True, exist_ok=True)
    subprocess.run(["ffmpeg", "-y", "-v", "error", "-f", "f32le", "-ar", str(wav.RATE), "-ac", "2", "-i", "-", "-c:a",
                    "libvorbis", "-q:a", QUALITY, "-fflags", "+bitexact", "-flags:a", "+bitexact", "-map_metadata",
                    "-1", str(path)], check=True, input=sound.astype("<f4").tobytes())


def save(name, piece):
    sound = round_trip(play(piece), piece.seconds)
    gain = LEVEL - loudness.integrated(sound, wav.RATE)
    sound = bend_peaks(sound * 10 ** (gain / 20))
    path = MUSIC / name
    encode(path, sound)
    print(f"data/music/{name}: {len(sound) / wav.RATE:.2f} s, gain {gain:.1f} dB, {path.stat().st_size} bytes")
