"""Pieces of music as notes, written as a standard MIDI file.

Times and lengths are in beats. A piece goes round: `write` lays it down again and again, so that what rings over its
end is heard at its beginning.
"""

import struct

TICKS = 480  # of a beat
STEPS = {"C": 0, "D": 2, "E": 4, "F": 5, "G": 7, "A": 9, "B": 11}
FREE_CHANNELS = [channel for channel in range(16) if channel != 9]  # 9 is the drums'
LARGEST = 127  # of volume, velocity and controllers


def pitch(name):
    """Number of a note: "C4" is 60, "F#3", "Bb2"."""
    sharps = name.count("#") - name[1:].count("b")
    return STEPS[name[0]] + sharps + 12 * (int(name[1:].lstrip("#b")) + 1)


def tune(text):
    """Notes of a melody, one after the other, as (start, length, pitch).

    The text holds pairs of a note, "-" for a rest or "~" to hold the last note on, and its length. "|" stands between
    bars of four beats and is checked.
    """
    notes, place = [], 0.0
    words = iter(text.split())
    for word in words:
        if word == "|":
            if place % 4:
                raise ValueError(f"bar line at beat {place}: {text}")
            continue
        length = float(next(words))
        if word == "~":
            begin, held, key = notes.pop()
            notes.append((begin, held + length, key))
        elif word != "-":
            notes.append((place, length, pitch(word)))
        place += length
    return notes


class Voice:
    """One instrument: its notes as (start, length, pitch, velocity)."""

    def __init__(self, program, volume, pan, reverb):
        self.program, self.volume, self.pan, self.reverb = program, volume, pan, reverb
        self.notes = []

    def play(self, start, length, key, velocity):
        self.notes.append((start, length, pitch(key) if isinstance(key, str) else key, velocity))

    def sing(self, start, text, velocity, shift=0):
        """A tune from `start` on, `shift` half steps higher."""
        for place, length, key in tune(text):
            self.play(start + place, length, key + shift, velocity)


class Piece:
    def __init__(self, beats_a_minute, beats):
        self.microseconds = round(60_000_000 / beats_a_minute)  # of a beat, a whole number in the file
        self.beats = beats
        self.voices = []

    @property
    def seconds(self):
        return self.beats * self.microseconds / 1_000_000

    def voice(self, program, volume, pan, reverb):
        """Adds an instrument of General MIDI, counted from 0; volume, pan (64 is the middle) and reverb up to 127."""
        self.voices.append(Voice(program, volume, pan, reverb))
        return self.voices[-1]

    def write(self, path, until):
        """The piece from its beginning, repeated up to beat `until`."""
        tempo = b"\x00\xff\x51\x03" + self.microseconds.to_bytes(3, "big") + END_OF_TRACK
        tracks = [tempo] + [self.track(number, voice, until) for number, voice in enumerate(self.voices)]
        path.write_bytes(b"MThd" + struct.pack(">IHHH", 6, 1, len(tracks), TICKS)
                         + b"".join(b"MTrk" + struct.pack(">I", len(track)) + track for track in tracks))

    def track(self, number, voice, until):
        channel = FREE_CHANNELS[number]
        setting = 0xB0 | channel
        events = [(0, 0, bytes([0xC0 | channel, voice.program])), (0, 0, bytes([setting, 7, voice.volume])),
                  (0, 0, bytes([setting, 10, voice.pan])), (0, 0, bytes([setting, 91, voice.reverb]))]
        for index, (start, length, key, velocity) in enumerate(voice.notes):
            late, louder = unevenness(index, number)
            beat = start
            while beat < until:
                begin = max(0, round(beat * TICKS) + late)
                pressed = min(max(velocity + louder, 1), LARGEST)
                events.append((begin, 2, bytes([0x90 | channel, key, pressed])))
                events.append((begin + round(length * TICKS), 1, bytes([0x80 | channel, key, 0])))
                beat += self.beats
        events.sort(key=lambda event: event[:2])  # at one time a note ends before the next begins
        track, last = b"", 0
        for time, _, message in events:
            track += variable_length(time - last) + message
            last = time
        return track + END_OF_TRACK


END_OF_TRACK = b"\x00\xff\x2f\x00"


def unevenness(index, voice):
    """What a hand does: up to 7 ticks early or late, up to 4 softer or louder; the same in every round."""
    return (index * 2654435761 + voice * 977) % 15 - 7, (index * 40503 + voice * 31) % 9 - 4


def variable_length(number):
    digits = [number & 127]
    while number := number >> 7:
        digits.insert(0, number & 127 | 128)
    return bytes(digits)
