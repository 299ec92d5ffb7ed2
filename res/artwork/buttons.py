"""Buttons and switches, each in its states."""
from typing import NamedTuple

from glyphs import glyph, struck_out
from palette import (AMBER, AMBER_DOWN, CREAM, GROUND_OPACITY, INK, INK_SOFT, LINE, RIM_OPACITY,
                     SIGNAL, SIGNAL_DOWN, TRACK, WHITE)
from svg import circle, rect, shadow, words


class PuckState(NamedTuple):
    """A round ground and what stands on it."""

    fill: str
    opacity: float
    rim: str
    rim_opacity: float
    ink: str


IDLE = PuckState(INK, GROUND_OPACITY, CREAM, RIM_OPACITY, CREAM)
LIT = PuckState(AMBER, 1, INK, 0.55, INK)
DOWN = PuckState(CREAM, 1, INK, 0.55, INK)


def puck(size, state):
    """The ground of a round button; small ones fill their rectangle, to be hit more easily."""
    middle = size / 2
    radius = middle - (4 if size > 60 else 2.5)
    ground = circle(middle, middle, radius, fill=state.fill, fill_opacity=state.opacity)
    # The rim keeps the puck visible on black.
    return shadow(ground) + circle(middle, middle, radius - 1, fill="none", stroke=state.rim,
                                   stroke_opacity=state.rim_opacity, stroke_width=2)


def round_button(name, state=IDLE, off=False):
    """80 x 80 with a pictogram; a stroke through it means switched off."""
    drawing = glyph(name, 40, 40, 46, state.ink)
    return puck(80, state) + (struck_out(drawing, 40, 40, 18.5, state.ink) if off else drawing)


def small_button(name, size, state=IDLE):
    """51 x 51."""
    return puck(51, state) + glyph(name, 25.5, 25.5, size, state.ink)


def hdr_button(on):
    """The word and a lamp."""
    state = LIT if on else IDLE
    lamp = circle(40, 57, 5, fill=SIGNAL if on else "none", stroke=state.ink, stroke_width=2.5)
    return puck(80, state) + words(40, 44, "HDR", 27, state.ink) + lamp


def shared_badge():
    return puck(80, LIT) + glyph("share", 40, 38, 46, INK)


def shutter(down=False, counter=""):
    """109 x 109: a red disc in a cream ring, with a shot counter upon it."""
    middle = 54.5
    radius = 35 if down else 39
    ground = shadow(circle(middle, middle, 49, fill=INK, fill_opacity=GROUND_OPACITY))
    ring = circle(middle, middle, 46.5, fill="none", stroke=CREAM, stroke_width=5)
    return ground + ring + _red_disc(middle, radius, down) + counter


def return_button(down=False):
    """69 x 69: red always leads back to taking pictures."""
    middle = 34.5
    return (shadow(circle(middle, middle, 31, fill=CREAM))
            + _red_disc(middle, 25 if down else 27, down)
            + glyph("camera", middle, 33.5, 32 if down else 35, WHITE))


def _red_disc(middle, radius, down):
    disc = circle(middle, middle, radius, fill=SIGNAL_DOWN if down else SIGNAL)
    return disc + circle(middle, middle, radius, fill="url(#plastic)")


def _counted(shot, done):
    return {"fill": CREAM} if shot < done else {"fill": INK, "fill_opacity": 0.42}


def strip_counter(done):
    """Four strips, as the picture will have."""
    return "".join(rect(27 + 14.5 * i, 35, 11, 39, 4, **_counted(i, done)) for i in range(4))


def quarter_counter(done):
    """Two by two."""
    return "".join(rect(32 + 24 * (i % 2), 32 + 24 * (i // 2), 21, 21, 5, **_counted(i, done))
                   for i in range(4))


def double_counter(done):
    """Two overlapping exposures, which show through each other."""
    return "".join(
        circle(45 + 19 * i, 54.5, 15, stroke=CREAM, stroke_width=3,
               **_counted(i, done) | ({"fill_opacity": 0.8} if i < done else {}))
        for i in range(2))


def album_button(name, down=False):
    """68 x 68, on the dark desk."""
    return (rect(2, 2, 64, 64, 18, fill=CREAM if down else INK, stroke=CREAM,
                 stroke_opacity=0 if down else RIM_OPACITY, stroke_width=2)
            + glyph(name, 34, 34, 40, INK if down else CREAM))


def row_icon(content):
    """64 x 64, before a row of the settings."""
    return rect(6, 6, 52, 52, 14, fill=INK_SOFT) + content


def glyph_icon(name):
    return row_icon(glyph(name, 32, 32, 34))


def letter_icon(letter):
    """Networks are letters in our own type, not other people's signs."""
    return row_icon(words(32, 44, letter, 34, CREAM))


def toggle(on, down=False):
    """148 x 44: the word, the side and the colour say the same."""
    if on:
        fill, knob, word, knob_x, word_x = AMBER_DOWN if down else AMBER, INK, "ON", 126, 66
    else:
        fill, knob, word, knob_x, word_x = LINE if down else WHITE, TRACK, "OFF", 22, 86
    return (rect(2.5, 2.5, 143, 39, 19.5, fill=fill, stroke=knob, stroke_width=3)
            + circle(knob_x, 22, 14, fill=knob)
            + words(word_x, 30, word, 24, INK))


def resolution_button(fill, outline):
    """190 x 44; its text is the control's."""
    return rect(2, 2, 186, 40, 12, fill=fill, stroke=outline, stroke_width=2)
