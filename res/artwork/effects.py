"""Pictures of the effects: prints of the developed scene, and the reel that they turn on."""
from glyphs import glyph, struck_out
from palette import AMBER, CREAM, INK, RIM_OPACITY
from svg import circle, group, path, polar, rect, rotated, shadow, shot, stroked, words

NAMES = {"normal": "Normal", "fisheye": "Fisheye", "concave": "Concave", "bw": "B&W",
         "beach": "Beach", "fall": "Fall", "sepia": "Sepia", "negative": "Negative",
         "edge": "Edge", "mirror": "Mirror"}
KINDS = list(NAMES)
# Cameras that put several shots into a picture do without these.
SINGLE_SHOT_ONLY = ("fisheye", "concave", "mirror")


def print_tile(effect, dim=False):
    """170 x 170, on the film strip of the option form."""
    paper = rect(7, 6, 156, 156, 8, fill=CREAM)
    picture = shot(effect, 15, 14, 140, 110, 4)
    if not dim:
        return shadow(paper) + picture + words(85, 151, NAMES[effect], 28, INK)
    return (group(paper, opacity=0.22)
            + struck_out(group(picture, opacity=0.45), 85, 69, 24, width=6)
            + words(85, 151, NAMES[effect], 28, CREAM, opacity=0.75))


def _window_shot(effect):
    # The lines of Edge are a pixel wide whatever the size, and would vanish when made smaller.
    return "edge_small" if effect == "edge" else effect


def _window(effect, current, dim):
    """A window of the reel, upright at three o'clock."""
    width, height = (52, 50) if current else (44, 40)
    x, y = (213 if current else 211) - width / 2, 123 - height / 2
    frame = (stroked(AMBER, 4) if current else stroked(CREAM, 2, stroke_opacity=0.75))
    picture = shot(_window_shot(effect), x, y, width, height, 6)
    drawing = picture + rect(x, y, width, height, 6, **frame)
    if not dim:
        return drawing
    return struck_out(group(drawing, opacity=0.3), x + width / 2, 123, 10, width=4)


def _reel_disc():
    teeth = "".join(f"M{polar(123, 123, 118, 8 * i + 4)}L{polar(123, 123, 119.5, 8 * i + 4)}"
                    for i in range(45))
    return (shadow(circle(123, 123, 119, fill=INK, fill_opacity=0.86))
            + path(teeth, **stroked(CREAM, 5.5, stroke_opacity=0.75))
            + circle(123, 123, 114, fill="none", stroke=CREAM, stroke_opacity=RIM_OPACITY,
                     stroke_width=2)
            + circle(123, 123, 36, fill="none", stroke=CREAM, stroke_opacity=0.35,
                     stroke_width=3))


def reel(effect, restricted=False):
    """246 x 246: the right part shows at the screen's left edge, the current effect at three
    o'clock, the next ones below. Only five windows are filled, more are never in sight."""
    here = KINDS.index(effect)
    windows = ""
    for step in (-2, 2, -1, 1, 0):  # the current one last, above its neighbours
        kind = KINDS[(here + step) % len(KINDS)]
        dim = restricted and kind in SINGLE_SHOT_ONLY
        windows += rotated(36 * step, 123, 123, _window(kind, step == 0, dim))
    up = glyph("up", 148, 94, 26)
    return _reel_disc() + windows + group(up, rotated(180, 148, 123, up), opacity=0.9)
