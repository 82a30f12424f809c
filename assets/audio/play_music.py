"""Composes the music of play, data/music/play.ogg: leading the water, E minor with a raised sixth now and then.

A guitar figure walks on under everything, plucked strings step with it. The tune is sparse, so that it leaves room for
the water: celesta and harp in unison, then the harp alone lower down, a wider middle part, and the first tune again
with a line of the cello. Two bars of the figure alone lead round.
"""

from audio import performance
from lib import midi

BAR = 4
# One chord a bar: root, and five notes from below; added seconds and fourths, no plain triads.
VERSE = (("E2", "E3 B3 E4 F#4 G4"), ("E2", "E3 B3 D4 F#4 A4"), ("C3", "C3 G3 D4 E4 G4"), ("D3", "D3 A3 D4 F#4 A4"),
         ("A2", "A2 E3 C#4 E4 B4"), ("G2", "G2 D3 B3 D4 A4"), ("C3", "C3 G3 B3 E4 G4"), ("B2", "B2 F#3 A3 D4 E4"),
         ("E2", "E3 B3 E4 G4 B4"), ("D3", "D3 A3 E4 F#4 A4"))
MIDDLE = (("C3", "C3 G3 D4 E4 B4"), ("D3", "D3 A3 D4 E4 A4"), ("E2", "E3 B3 D4 F#4 B4"), ("B2", "B2 G3 A3 D4 G4"),
          ("A2", "A2 E3 B3 C4 E4"), ("C3", "C3 G3 B3 D4 E4"), ("D3", "D3 A3 B3 F#4 A4"), ("B2", "B2 F#3 A3 D4 F#4"),
          ("A2", "A2 E3 B3 C#4 E4"), ("A2", "A2 E3 B3 D4 F#4"))
CLOSE = (("E2", "E3 B3 E4 F#4 G4"), ("E2", "E3 B3 D4 F#4 A4"))

TUNE = """- 4 | B4 1 D5 .5 E5 2 - .5 | - 2 G5 1 F#5 .5 D5 .5 | ~ 2 - 2 | - .5 C#5 .5 E5 1 B5 2 | - 1 A5 1 D5 2 |
          - 2 E5 .5 G5 .5 E5 1 | ~ 1 - 1 F#5 2 | - 1 G5 1 B5 1.5 A5 .5 | - 1 F#5 1 E5 2"""
LOW_TUNE = """B4 1.5 A4 .5 G4 1 F#4 1 | E4 2 - 1 D4 1 | E4 1 G4 1 D5 2 | C#5 .5 A4 1.5 F#4 2 | E5 1 C#5 1 B4 2 |
              D5 1.5 B4 .5 A4 2 | G4 1 E5 1 D5 1 B4 1 | A4 2 F#4 2 | E5 1 G5 1 B5 2 | A5 1 F#5 1 E5 2"""
ECHO = """- 4 | - 3 B5 .5 D6 .5 | - 4 | - 3 A5 1 | - 4 | - 2 B5 2 | - 4 | - 2 E6 1 D6 1 | - 4 | - 3 B5 1"""
WIDE_TUNE = """E5 3 D5 1 | E5 2 A5 2 | B5 3 G5 1 | A5 2 D5 2 | C6 1.5 B5 .5 E5 2 | - 1 G5 1 E5 1 D5 1 |
               E5 1 F#5 1 A5 1 B5 1 | D6 2 F#5 2 | E5 1 C#5 1 B4 2 | D5 2 E5 2"""
CELLO_LINE = """E3 4 | F#3 2 D3 2 | E3 2 G3 2 | A3 4 | B3 2 C#4 2 | B3 2 A3 2 | G3 4 | F#3 2 D3 2 | G3 2 B3 2 | A3 4"""

WALK, SWAY = (0, 2, 1, 3, 2, 4, 1, 3), (0, 3, 1, 4, 2, 3, 1, 2)
ACCENTS = (66, 44, 50, 46, 58, 48, 46, 42)


def compose():
    sections = (VERSE, VERSE, MIDDLE, VERSE, CLOSE)
    starts = [BAR * sum(map(len, sections[:number])) for number in range(len(sections) + 1)]
    first, second, middle, last, _, end = starts
    piece = midi.Piece(80, end)
    guitar, plucked = piece.voice(24, 84, 50, 60), piece.voice(45, 66, 78, 70)
    harp, celesta = piece.voice(46, 80, 80, 85), piece.voice(8, 84, 44, 100)
    bass, strings = piece.voice(43, 72, 60, 60), piece.voice(49, 48, 66, 90)
    cello = piece.voice(42, 56, 46, 80)

    for section, start in zip(sections, starts):
        for bar, (root, figure) in enumerate(section):
            beat, notes = start + bar * BAR, figure.split()
            order = SWAY if section is MIDDLE else WALK
            for step, place in enumerate(order):
                guitar.play(beat + step / 2, 0.9, notes[place], ACCENTS[step])
            bass.play(beat, 3.7, root, 52)
            if section is not CLOSE:
                strings.play(beat, 3.9, notes[1], 38)
                strings.play(beat, 3.9, notes[2], 34)
            if section is MIDDLE:  # lighter: the plucked strings step once a bar only
                plucked.play(beat + 2, 0.4, notes[1], 44)
            else:
                for offset, place, velocity in ((0, 0, 52), (1.5, 1, 40), (2.5, 1, 40)):
                    plucked.play(beat + offset, 0.4, notes[place], velocity)
            if bar % 4 == 3:
                for step, place in enumerate((1, 2, 3, 4)):
                    harp.play(beat + 2 + step / 4, 1.5, midi.pitch(notes[place]) + 12, 44 + 3 * step)

    celesta.sing(first, TUNE, 54)
    harp.sing(first, TUNE, 40)
    harp.sing(second, LOW_TUNE, 64)
    celesta.sing(second, ECHO, 46)
    celesta.sing(middle, WIDE_TUNE, 54)
    harp.sing(middle, WIDE_TUNE, 48, shift=-12)
    celesta.sing(last, TUNE, 56)
    harp.sing(last, TUNE, 44)
    cello.sing(last, CELLO_LINE, 50)
    return piece


if __name__ == "__main__":
    performance.save("play.ogg", compose())
