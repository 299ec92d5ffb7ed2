"""The six toy cameras: body, lenses, and the pictures that show a camera."""
from palette import AMBER, BODIES, CREAM, GROUND_OPACITY, INK, RIM_OPACITY, SIGNAL, VIEWFINDER
from svg import at, circle, element, group, path, rect, rotated, shadow, stroked, words

NAMES = {"kivo": "KIVO", "dslr": "DSLR", "action": "ACTION", "quad": "QUAD", "mix": "MIX",
         "ts": "TILT"}

_STEEL = "#6B6F78"
_ROSE, _GOLD = "#F3C6DF", "#FFD98A"  # the two exposures of MIX

_TOP_BOX = "M84 40V22q0-6 6-6h60q6 0 6 6v18z"
_TOPS = {
    "dslr": "M70 40L86 8h68l16 32z",
    "kivo": "M150 40V22q0-6 6-6h44q6 0 6 6v18z",
    "ts": "M84 40L96 14h48l12 26z",
}
_VIEWFINDERS = {
    "kivo": rect(160, 22, 36, 14, 4, fill=VIEWFINDER) + rect(26, 50, 30, 20, 5, fill=CREAM),
    "dslr": rect(96, 14, 48, 10, 4, fill=CREAM, opacity=0.9),
    "ts": rect(104, 20, 32, 14, 4, fill=VIEWFINDER),
}
_VIEWFINDER = rect(102, 21, 36, 13, 4, fill=VIEWFINDER)
# y of the middle, radius
_LENS_PLACES = {"action": (98, 54), "kivo": (100, 54), "dslr": (100, 54)}
_LENS_PLACE = (100, 50)


def lens(x, y, radius, ring=CREAM):
    glint_x, glint_y = x - radius * 0.24, y - radius * 0.28
    glint = element("ellipse", cx=glint_x, cy=glint_y, rx=radius * 0.16, ry=radius * 0.1,
                    fill="#fff", fill_opacity=0.85)
    return (circle(x, y, radius, fill=INK, fill_opacity=0.35)
            + circle(x, y, radius * 0.93, fill=ring)
            + circle(x, y, radius * 0.76, fill=INK)
            + circle(x, y, radius * 0.58, fill="url(#glass)")
            + circle(x, y, radius * 0.3, fill=INK, fill_opacity=0.65)
            + rotated(-38, glint_x, glint_y, glint))


def _four_in_a_row(x, y, radius):
    return "".join(lens(x + (i - 1.5) * radius * 0.98, y, radius * 0.47) for i in range(4))


def _two_by_two(x, y, radius):
    return "".join(lens(x + side * radius * 0.55, y + row * radius * 0.55, radius * 0.52)
                   for side in (-1, 1) for row in (-1, 1))


def _overlapping(x, y, radius):
    half = radius * 0.5
    return (lens(x - half, y, radius * 0.78, _ROSE)
            + group(lens(x + half, y, radius * 0.78, _GOLD), opacity=0.86))


def _turned_board(x, y, radius):
    board = rect(x - radius * 1.18, y - radius * 0.86, radius * 2.36, radius * 1.72,
                 radius * 0.22, fill=INK, fill_opacity=0.45)
    marks = "".join(path(f"M{x + radius * left:.2f} {y}h{radius * 0.16:.2f}",
                         **stroked(AMBER, radius * 0.12)) for left in (-1.05, 0.89))
    return rotated(-16, x, y, board + lens(x, y, radius * 0.84) + marks)


def _steel_ring(x, y, radius):
    return (lens(x, y, radius * 1.05, _STEEL)
            + circle(x, y, radius * 0.99, fill="none", stroke=AMBER, stroke_width=radius * 0.055))


_LENSES = {"kivo": lens, "dslr": _steel_ring, "action": _four_in_a_row, "quad": _two_by_two,
           "mix": _overlapping, "ts": _turned_board}


def lenses(kind, x, y, radius):
    """What the camera looks through says what it does."""
    return _LENSES[kind](x, y, radius)


def camera(kind, outline=0):
    """240 x 168 without a shadow; an outline sets small ones off from a dark ground."""
    body = BODIES[kind]
    # Red on the red camera would be lost.
    release = rect(34, 20, 36, 24, 7, fill=INK if kind == "kivo" else SIGNAL)
    top = release + path(_TOPS.get(kind, _TOP_BOX), fill=body.shade)
    case = rect(10, 34, 220, 128, 24, fill=body.colour)
    foot = path("M10 128h220v10a24 24 0 0 1-24 24H34a24 24 0 0 1-24-24z", fill=body.shade)
    grip = path("M10 58a24 24 0 0 1 24-24h14v128H34a24 24 0 0 1-24-24z", fill=body.shade)
    if outline:
        top = group(top, case, stroke=CREAM, stroke_width=outline, stroke_linejoin="round")
    return (top + case + foot + (grip if kind == "dslr" else "")
            + rect(10, 34, 220, 128, 24, fill="url(#plastic)")
            + _VIEWFINDERS.get(kind, _VIEWFINDER)
            + lenses(kind, 120, *_LENS_PLACES.get(kind, _LENS_PLACE)))


def standing_camera(kind):
    """With the shadow that it throws on the table."""
    return element("ellipse", cx=120, cy=164, rx=104, ry=9, fill="#000", opacity=0.35,
                   filter="url(#soft)") + camera(kind)


def camera_card(kind):
    """292 x 258; the lower middle stays clear for the arrow of the form."""
    return (at(26, 10, standing_camera(kind))
            + words(146, 218, NAMES[kind], 36, INK, letter_spacing=1.5))


def camera_button(kind):
    """100 x 90."""
    ground = shadow(rect(4, 4, 92, 80, 20, fill=INK, fill_opacity=GROUND_OPACITY))
    rim = rect(5, 5, 90, 78, 19, fill="none", stroke=CREAM, stroke_opacity=RIM_OPACITY,
               stroke_width=2)
    return (ground + rim + at(17, 8, camera(kind, outline=7), scale=0.275)
            + words(50, 76, NAMES[kind], 20, CREAM, letter_spacing=0.5))
