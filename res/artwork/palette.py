"""The colours of the camera. Red takes pictures, amber marks what is on or current."""
from typing import NamedTuple

INK = "#1C1A17"  # pucks, film, words on cream
INK_SOFT = "#2E2A26"  # tiles and dark buttons
CREAM = "#FAF5EA"  # glyphs, prints, sheets
PAPER = "#EDE4D2"  # form grounds, sprocket holes
LINE = "#CDBFA6"  # hairlines, pressed paper
TEXT = "#404040"  # quiet words on cream
TRACK = "#857A69"  # outlines of paper controls
WHITE = "#FFFFFF"
SIGNAL = "#CF3A20"
SIGNAL_DOWN = "#9E2612"
AMBER = "#FFB938"
AMBER_DOWN = "#E39A12"
MINT = "#7BE8AE"  # in focus, nothing else
VIEWFINDER = "#CFE6EE"

GROUND_OPACITY = 0.8  # of what lies over the preview
RIM_OPACITY = 0.42


class Body(NamedTuple):
    """The plastic of one camera."""

    colour: str
    shade: str
    ink: str  # of words upon it


BODIES = {
    "kivo": Body("#CF3A20", "#A62A14", CREAM),
    "dslr": Body("#41444B", "#2B2D33", CREAM),
    "action": Body("#F0A81C", "#C98406", INK),
    "quad": Body("#16787C", "#0D585C", CREAM),
    "mix": Body("#8C3F7C", "#6A2A5C", CREAM),
    "ts": Body("#4C7432", "#375722", CREAM),
}
