"""What the mask panel shows over the darkened preview: a value while it is being changed."""
from effects import NAMES as EFFECT_NAMES
from glyphs import glyph, struck_out
from palette import AMBER, CREAM, INK, MINT, SIGNAL
from svg import circle, path, rect, shot, stroked, words

_MIDDLE = 145


def _value(pictogram, word):
    """290 x 260; long words in smaller type."""
    return pictogram + words(_MIDDLE, 214, word, 52 if len(word) < 10 else 46, CREAM)


def _ring(colour):
    return circle(_MIDDLE, 80, 76, fill="none", stroke=colour, stroke_width=6)


def glyph_mask(name, word, lit=False, off=False):
    colour = AMBER if lit else CREAM
    drawing = glyph(name, _MIDDLE, 80, 92, colour)
    if off:
        drawing = struck_out(drawing, _MIDDLE, 80, 40, colour, 8)
    return _value(_ring(colour) + drawing, word)


def hdr_mask(on):
    """Word and lamp, as on the button."""
    colour = AMBER if on else CREAM
    lamp = circle(_MIDDLE, 124, 8, fill=SIGNAL if on else "none", stroke=colour, stroke_width=4)
    return _value(_ring(colour) + words(_MIDDLE, 98, "HDR", 56, colour) + lamp,
                  "HDR on" if on else "HDR off")


def effect_mask(effect):
    paper = rect(43, 2, 204, 156, 10, fill=CREAM)
    return _value(paper + shot(effect, 52, 11, 186, 138, 5), EFFECT_NAMES[effect])


def processing():
    """290 x 56."""
    pill = rect(1, 1, 288, 54, 27, fill=CREAM)
    return pill + circle(30, 28, 11, fill=SIGNAL) + words(157, 39, "Developing\u2026", 34, INK)


def focus_guide(focused):
    """153 x 124: four corners; in focus they turn green, grow bolder and gain a dot."""
    arm = 30
    corners = (f"M8 {8 + arm}V20Q8 8 20 8H{8 + arm}M{145 - arm} 8H133Q145 8 145 20V{8 + arm}"
               f"M145 {116 - arm}V104Q145 116 133 116H{145 - arm}"
               f"M{8 + arm} 116H20Q8 116 8 104V{116 - arm}")
    colour, width = (MINT, 6) if focused else (CREAM, 4)
    dot = circle(76.5, 62, 9, fill=INK, fill_opacity=0.6) + circle(76.5, 62, 6, fill=colour)
    # The dark line beneath keeps it visible on white.
    return (path(corners, **stroked(INK, width + 6, stroke_opacity=0.7))
            + path(corners, **stroked(colour, width)) + (dot if focused else ""))
