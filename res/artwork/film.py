"""Film, paper and desk: the grounds of the forms, splash screens and album prints."""
from cameras import NAMES as CAMERA_NAMES, camera, lenses
from palette import AMBER, BODIES, CREAM, INK, INK_SOFT, LINE, PAPER, SIGNAL
from svg import at, circle, deep_shadow, path, rect, rotated, shot, stroked, words

SCREEN = (800, 480)
MOTTOES = {"kivo": "One lens, one moment", "dslr": "Sharp here, soft there",
           "action": "Four beats of a move", "quad": "Four moments, one picture",
           "mix": "Two pictures in one", "ts": "The world as a model"}
# x, y of the middle and radius of the lenses
_SPLASH_LENSES = {"action": (548, 150, 118), "mix": (568, 226, 160), "ts": (590, 226, 150)}
_SPLASH_LENS = (600, 226, 166)


def logo(colour=CREAM, iris=SIGNAL):
    """122 x 48: the last letter is a lens."""
    letters = path("M7 8V40M26 8L8 25.5L28 40M40 8V40M52 8L64.5 40L77 8", **stroked(colour, 8))
    ring = circle(101, 24, 15, fill="none", stroke=colour, stroke_width=8)
    return letters + ring + circle(101, 24, 6.5, fill=iris)


def _ground(colour):
    return rect(0, 0, *SCREEN, fill=colour)


def _holes(y, colour, height=14):
    return "".join(rect(9 + 40 * i, y, 22, height, 4, fill=colour) for i in range(20))


def _film_foot(y, colour):
    """A strip of film along the foot of the screen, its holes showing what lies beneath."""
    height = SCREEN[1] - y
    return rect(0, y, SCREEN[0], height, fill=INK) + _holes(y + (height - 14) / 2, colour)


def option_ground():
    """A table for the cameras, a film strip for the effects."""
    return (_ground(PAPER) + circle(400, 150, 190, fill=CREAM)
            + rect(0, 300, 800, 180, fill=INK) + _holes(309, PAPER, 12) + _holes(461, PAPER, 12)
            + at(24, 22, logo(INK)))


def setting_ground():
    """One sheet, with a line above each row but the first."""
    lines = "".join(path(f"M130 {y}h568", stroke=LINE, stroke_width=2)
                    for y in (174, 239, 304, 369))
    return (_ground(PAPER) + rect(24, 8, 682, 432, 22, fill=CREAM) + lines
            + _film_foot(448, PAPER))


def album_ground():
    return _ground("url(#desk)")


def print_frame(width, height):
    """The print around a photo of width x height, with 12 pixels of room for its shadow."""
    paper = rect(0, 0, width + 42, height + 37, 5, fill=CREAM)
    return at(12, 12, deep_shadow(paper) + rect(20, 13, width + 2, height + 2, fill=LINE))


def broken_picture():
    """626 x 376, in place of a photo: torn."""
    return (rect(0, 0, 626, 376, fill=INK_SOFT)
            + path("M0 0h300l-34 84 46 70-52 92 30 130H0z", fill="#3A342E"))


def empty_album():
    """632 x 382: room for a photo, and one waiting to be taken."""
    room = rect(3, 3, 626, 376, 16, **stroked(CREAM, 3, stroke_opacity=0.4,
                                              stroke_dasharray="3 11"))
    paper = rect(196, 34, 240, 212, 6, fill=CREAM)
    return room + rotated(-4, 316, 148, deep_shadow(paper),
                          rect(210, 48, 212, 150, fill=PAPER),
                          at(244, 66, camera("kivo"), scale=0.6))


def _splash(ground, disc, pictures, name, size, motto, ink, holes):
    return (_ground(ground) + circle(600, 226, 260, fill=disc) + pictures
            + _film_foot(438, holes)
            + at(44, 40, logo(ink, AMBER if ink == CREAM else SIGNAL))
            + words(40, 330, name, size, ink, anchor="start", letter_spacing=2)
            + words(46, 386, motto, 30, ink, bold=False, anchor="start"))


def camera_splash(kind):
    body = BODIES[kind]
    pictures = lenses(kind, *_SPLASH_LENSES.get(kind, _SPLASH_LENS))
    return _splash(body.colour, body.shade, pictures, CAMERA_NAMES[kind], 116, MOTTOES[kind],
                   body.ink, body.colour)


def album_splash():
    prints = "".join(
        rotated(turn, x + 130, y + 130,
                rect(x, y, 270, 252, 8, fill=CREAM, stroke=INK, stroke_opacity=0.3, stroke_width=3)
                + shot(effect, x + 16, y + 16, 238, 180, 3))
        for turn, effect, x, y in (
            (9, "sepia", 464, 60), (-7, "beach", 492, 76), (3, "normal", 478, 90)))
    return _splash(INK_SOFT, INK, prints, "ALBUM", 104, "What you have seen", CREAM, PAPER)


def down_arrow():
    """44 x 28: between the camera and the effects that it takes."""
    return path("M2.5 3h39L22 25z", fill=SIGNAL, stroke=SIGNAL, stroke_width=3,
                stroke_linejoin="round")
