"""Composes the music of the menus, data/music/menu.ogg: dusk over the tarn, D dorian, calm.

Harp figures over a cello; the tune goes to the celesta, the guitar, the celesta again higher up, and at last to both
with a line of the cello beneath. It never closes: no leading note, no chord of the fifth before that of the key.
"""

from audio import performance
from lib import midi

BAR = 4
# One chord a bar: root, fifth of the low strings, and five notes of the harp from below.
VERSE = (("D2", "A2", "D3 A3 D4 E4 A4"), ("C3", "G2", "C3 G3 D4 E4 G4"), ("G2", "D3", "G2 D3 B3 D4 A4"),
         ("D2", "A2", "D3 A3 C4 E4 A4"), ("F2", "C3", "F3 C4 E4 G4 C5"), ("A2", "E3", "A2 E3 B3 C4 E4"),
         ("G2", "D3", "G2 D3 A3 B3 D4"), ("D2", "A2", "D3 A3 D4 E4 F4"))
MIDDLE = (("F2", "C3", "F3 C4 E4 G4 A4"), ("E2", "C3", "E3 C4 D4 G4 B4"), ("G2", "D3", "G3 B3 D4 A4 B4"),
          ("A2", "E3", "A3 C4 E4 G4 B4"), ("F2", "C3", "A3 C4 E4 G4 A4"), ("E2", "B2", "G3 B3 D4 E4 A4"),
          ("F2", "C3", "F3 A3 C4 E4 G4"), ("G2", "D3", "G3 B3 D4 E4 A4"), ("A2", "E3", "A3 C4 E4 B4 C5"),
          ("A2", "E3", "A3 D4 E4 B4 D5"))
CLOSE = (("D2", "A2", "D3 A3 D4 E4 A4"), ("D2", "A2", "D3 A3 C4 E4 G4"))

TUNE = """- 1 A5 1.5 G5 .5 E5 1 | ~ 2 - 2 | - .5 D5 .5 E5 1 B4 2 | - 1 C5 1 E5 2 |
          - 1 G5 1 A5 1 C6 1 | ~ 1 - 1 B5 1 E5 1 | - 1 D5 1.5 B4 .5 A4 1 | ~ .5 - .5 E5 2.5 - .5"""
ANSWER = """D4 1.5 E4 .5 A4 2 | G4 1 E4 1 D4 2 | - .5 B3 .5 D4 1 E4 1 A4 1 | F4 2 E4 2 |
            - 1 C5 1 A4 1 G4 1 | E4 2 - .5 B3 .5 C4 1 | D4 1.5 E4 .5 G4 1 A4 1 | E4 3 - 1"""
ECHO = """- 4 | - 3 D5 .5 E5 .5 | - 4 | - 2 A5 2 | - 4 | - 2 B5 1.5 - .5 | - 4 | - 2 E5 1 A5 1"""
RISE = """C6 2 B5 1 A5 1 | G5 3 - 1 | B5 2 A5 1 G5 1 | E5 3 - 1 | A5 1 C6 1 D6 1 E6 1 | B5 3 - 1 |
          A5 1.5 G5 .5 E5 2 | D5 1 E5 1 G5 2 | - 1 A5 1 B5 1 C6 1 | B5 1 A5 1 E5 2"""
CELLO_LINE = """A3 2 G3 2 | E3 4 | D3 2 B3 2 | A3 4 | C4 2 A3 2 | E3 4 | B3 2 D4 2 | A3 4"""

UP_AND_DOWN, CROSSING = (0, 1, 2, 3, 4, 3, 2, 1), (0, 2, 1, 3, 2, 4, 3, 1)
ACCENTS = (62, 46, 50, 54, 60, 48, 46, 42)


def compose():
    sections = (VERSE, VERSE, MIDDLE, VERSE, CLOSE)
    starts = [BAR * sum(map(len, sections[:number])) for number in range(len(sections) + 1)]
    first, second, middle, last, close, end = starts
    piece = midi.Piece(66, end)
    harp, guitar = piece.voice(46, 84, 54, 90), piece.voice(24, 78, 78, 70)
    celesta, strings = piece.voice(8, 90, 80, 100), piece.voice(48, 56, 60, 90)
    cello = piece.voice(42, 62, 48, 85)

    for section, start in zip(sections, starts):
        for bar, (root, fifth, figure) in enumerate(section):
            beat, notes = start + bar * BAR, figure.split()
            cello.play(beat, 3.9, root, 50)
            strings.play(beat, 3.95, fifth, 38)
            strings.play(beat, 3.95, notes[2], 34)
            if section is CLOSE:  # the figure comes to rest
                for step, note in enumerate(notes[:4]):
                    harp.play(beat + step, 2.5, note, 54 - 3 * step)
                continue
            order = CROSSING if section is MIDDLE else UP_AND_DOWN
            for step, place in enumerate(order):
                harp.play(beat + step / 2, 1.6, notes[place], ACCENTS[step])
            if start in (first, last) and bar % 2:
                for offset, length, place, velocity in ((2.5, 0.5, 4, 54), (3, 0.5, 3, 50), (3.5, 1, 2, 46)):
                    guitar.play(beat + offset, length, notes[place], velocity)

    celesta.sing(first, TUNE, 56)
    guitar.sing(second, ANSWER, 72)
    celesta.sing(second, ECHO, 46)
    celesta.sing(middle, RISE, 54)
    harp.sing(middle, RISE, 46, shift=-12)
    celesta.sing(last, TUNE, 58)
    harp.sing(last, TUNE, 44, shift=-12)
    cello.sing(last, CELLO_LINE, 46)
    guitar.sing(close, "- 2 A4 1 E4 1 | D4 3 - 1", 50)
    return piece


if __name__ == "__main__":
    performance.save("menu.ogg", compose())
