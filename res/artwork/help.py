"""The help screen, which names every control in its place, and the credits."""
from buttons import DOWN, hdr_button, round_button, shutter, small_button
from cameras import camera_button
from effects import reel
from film import logo
from masks import focus_guide
from palette import AMBER, CREAM, INK, SIGNAL_DOWN, TEXT
from svg import at, rect, stroked, words
from zoom import zoom_bar

# x, base line, anchor, heading, lines
_NOTES = (
    (44, 118, "start", "Camera", ("choose camera", "and effect")),
    (76, 222, "start", "Effect", ("tap to pull out,", "drag up or down")),
    (700, 62, "end", "Zoom", ("tap to pull down,", "drag left or right")),
    (668, 214, "end", "Shutter", ("or the", "camera key")),
    (400, 234, "middle", "Focus", ("green: sharp",)),
    (264, 338, "middle", "HDR", ("keeps a", "second picture")),
    (382, 338, "middle", "Light", ("sun, cloud,", "tube or lamp")),
    (500, 338, "middle", "Flash", ("always on", "or off")),
    (618, 338, "middle", "Turn", ("to the front", "or back")),
    (736, 338, "middle", "Album", ("look, share,", "delete")),
    (749, 108, "middle", "Back", ()),
    (41, 389, "middle", "Close", ()),
    (128, 432, "start", "Settings", ()),
)


def _controls():
    """Every control at full strength, as it is when the camera starts."""
    return (at(505, -56, zoom_bar(0)) + at(-184, 108, reel("normal"))
            + at(682, 173, shutter()) + at(11, 9, camera_button("kivo"))
            + at(224, 385, hdr_button(False)) + at(342, 385, round_button("auto"))
            + at(460, 385, round_button("bolt", off=True)) + at(578, 385, round_button("swap"))
            + at(696, 385, round_button("album")) + at(70, 400, small_button("gear", 38))
            # Where the help button was, a press now closes the help.
            + at(16, 400, small_button("close", 34, DOWN)) + at(323, 178, focus_guide(False)))


def _note(x, y, anchor, heading, lines):
    return words(x, y, heading, 20, AMBER, anchor=anchor) + "".join(
        words(x, y + 21 + 19 * i, line, 18, CREAM, bold=False, anchor=anchor)
        for i, line in enumerate(lines))


def help_picture():
    """800 x 480, over the darkened preview; the return button and the logo are controls."""
    credit_pill = (rect(271, 43, 150, 46, 23, **stroked(CREAM, 2.5))
                   + words(346, 73, "Credits", 22, CREAM))
    return _controls() + credit_pill + "".join(_note(*note) for note in _NOTES)


def credits_sheet(version):
    """340 x 212: a press anywhere on it goes back to the help. The sheet ends higher, above the
    headings of the lower row."""
    return (rect(0, 0, 340, 184, 20, fill=CREAM) + at(109, 13, logo(INK))
            + words(170, 91, "A camera with six characters", 22, INK)
            + words(170, 118, f"Version {version}", 20, TEXT, bold=False)
            + words(170, 142, "Set in Cabin, a free typeface (OFL)", 18, TEXT, bold=False)
            + words(170, 169, "Tap to go back", 18, SIGNAL_DOWN))
