"""The zoom: a lens barrel that hangs from the top edge, and the picture of a step."""
from palette import AMBER, CREAM, INK, RIM_OPACITY
from svg import circle, element, group, path, rect, shadow, stroked, words

LEVELS = {"1x": "1x", "1_5x": "1.5x", "2x": "2x", "2_5x": "2.5x", "3x": "3x", "3_5x": "3.5x",
          "max": "max"}
_FIGURES = list(LEVELS.values())
_MAGNIFICATIONS = (1, 1.5, 2, 2.5, 3, 3.5, 4)

_BODY = "M0 0H295V82H192Q186 82 182 86T172 90H123Q117 90 113 86T103 82H24Q0 82 0 58Z"
_EDGE = "M1 0V58Q1 81 24 81H103Q109 81 113 85T123 89H172Q178 89 182 85T192 81H295"
_MIDDLE = 147.5
_PITCH = 62
_SIZES_AND_OPACITIES = ((29, 1), (21, 0.85), (18, 0.5))  # by distance from the current figure


def _ribs(level):
    """They seem to turn: each level stands half a rib further on."""
    turned = level * 15 % 10
    ribs = "".join(rect(2 + 10 * i - turned, 4, 6, 40, 3, fill=CREAM, fill_opacity=0.22)
                   for i in range(-1, 31))
    return (element("clipPath", path(_BODY), id="body")
            + group(ribs, rect(0, 0, 295, 52, fill="url(#barrel)"), clip_path="url(#body)"))


def _figures(level):
    drawing = ""
    for step in range(-2, 3):
        shown, x = level + step, _MIDDLE + step * _PITCH
        if not 0 <= shown < len(_FIGURES):
            continue
        size, opacity = _SIZES_AND_OPACITIES[abs(step)]
        drawing += words(x, 77, _FIGURES[shown], size, AMBER if step == 0 else CREAM,
                         opacity=opacity)
        # Beside the current figure there is no room for a dot.
        if step in (-2, 1) and shown + 1 < len(_FIGURES):
            drawing += circle(x + _PITCH / 2, 68, 2.5, fill=CREAM, fill_opacity=0.6)
    return drawing


def zoom_bar(level):
    """295 x 90; the lower 34 pixels stay in sight when it is retracted."""
    index = path("M138 41h19l-9.5 11z", fill=AMBER)
    grip = rect(128, 83.5, 39, 3, 1.5, fill=CREAM, fill_opacity=0.85)
    return (shadow(path(_BODY, fill=INK, fill_opacity=0.86)) + _ribs(level)
            + path(_EDGE, fill="none", stroke=CREAM, stroke_opacity=RIM_OPACITY, stroke_width=2)
            + _figures(level) + index + grip)


def zoom_mask(level):
    """290 x 260: the part of the whole view that this step keeps, true to scale."""
    x, y = 145, 78
    full_width, full_height = 204, 136
    magnification = _MAGNIFICATIONS[level]
    width, height = full_width / magnification, full_height / magnification
    whole = rect(x - full_width / 2, y - full_height / 2, full_width, full_height, 12,
                 **stroked(CREAM, 4, fill=INK, fill_opacity=0.7, stroke_opacity=0.55,
                           stroke_dasharray="2 10"))
    kept = rect(x - width / 2, y - height / 2, width, height, min(10, height / 8), fill=CREAM,
                fill_opacity=0.16, stroke=AMBER, stroke_width=6)
    arm = min(11, height / 5)
    cross = path(f"M{x - arm:.1f} {y}h{2 * arm:.1f}M{x} {y - arm:.1f}v{2 * arm:.1f}",
                 **stroked(CREAM, 5))
    return whole + kept + cross + words(x, 236, _FIGURES[level], 88, CREAM)
