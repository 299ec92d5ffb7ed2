"""Pictograms in a box of 48 x 48: a pen of 4.5, round, and filled where that reads better."""
from palette import CREAM
from svg import circle, element, group, number, path, polar, rect, stroked, words

BOX = 48
_PEN = stroked("currentColor", 4.5)
_HEAVY_PEN = stroked("currentColor", 6)
_FILL = {"fill": "currentColor"}


def _rays(inner, outer, count, first=0):
    turns = [first + 360 / count * i for i in range(count)]
    return "".join(f"M{polar(24, 24, inner, turn)}L{polar(24, 24, outer, turn)}" for turn in turns)


def _gear():
    tooth = ((-11, 21), (11, 21), (14, 15.5), (31, 15.5))
    corners = [polar(24, 24, radius, 45 * i + turn) for i in range(8) for turn, radius in tooth]
    return f"M{'L'.join(corners)}Z"


_GLYPHS = {
    "mail": rect(4, 10, 40, 29, 4, **_PEN) + path("M6 14l18 14 18-14", **_PEN),
    "album": path("M14.5 12.5L33 5.5Q36.5 4.5 37.8 8L44 26", **_PEN)
    + rect(5, 15.5, 31, 27, 4, **_PEN)
    + path("M8 38l8.5-10 6 6.5 4-4L34 38z", **_FILL)
    + circle(26, 23.5, 3, **_FILL),
    "auto": words(24, 33, "A", 26, "currentColor") + path(_rays(18, 22, 10, 18), **_PEN),
    "bolt": path("M28 3L10 27h11l-3 18 20-26H26z", **_FILL, stroke="currentColor",
                 stroke_width=2.5, stroke_linejoin="round"),
    "bulb": path("M24 4a14.5 14.5 0 0 0-8.5 26.2V34h17v-3.8A14.5 14.5 0 0 0 24 4z", **_FILL)
    + path("M18 40h12M21 45h6", **_PEN),
    "camera": path("M8 14h7l3.5-5h11l3.5 5h7a5 5 0 0 1 5 5v17a5 5 0 0 1-5 5H8a5 5 0 0 1-5-5V19"
                   "a5 5 0 0 1 5-5zM24 18.5a8.5 8.5 0 1 0 .01 0z", **_FILL, fill_rule="evenodd")
    + circle(24, 27, 4.5, **_FILL),
    "card": path("M12 4h17l9 9v31H12z", **_PEN) + path("M19 11v7M26 11v7", **_PEN),
    "close": path("M11 11l26 26M37 11L11 37", **_HEAVY_PEN),
    "cloud": path("M14 37a9 9 0 0 1-1-17.9a12 12 0 0 1 22.6-2.3A10.2 10.2 0 0 1 35 37z", **_FILL),
    "gear": path(_gear() + "M24 17.5a6.5 6.5 0 1 0 .01 0z", **_FILL, fill_rule="evenodd",
                 stroke="currentColor", stroke_width=3, stroke_linejoin="round"),
    "help": path("M15.5 17a8.8 8.8 0 1 1 13 8.3q-4.5 2.3-4.5 6.2", **_HEAVY_PEN)
    + circle(24, 40.5, 3.6, **_FILL),
    "hills": path("M2 41L17 17l10 14 6-8 13 18z", **_FILL) + circle(35, 11, 5.5, **_FILL),
    "person": circle(24, 15, 9.5, **_FILL) + path("M5 45a19 17 0 0 1 38 0z", **_FILL),
    "share": path("M16 20H11v22h26V20h-5M24 30V6M15.5 13.5L24 5.5l8.5 8", **_PEN),
    "size": rect(4, 10, 40, 28, 4, **_PEN) + path("M12 24v-6h7M36 24v6h-7", **_PEN),
    "sound": path("M5 18h8l12-10v32L13 30H5z", **_FILL)
    + path("M32 17q5 7 0 14M38 11q10 13 0 26", **_PEN),
    "sun": circle(24, 24, 9, **_FILL) + path(_rays(15, 20, 8), **_PEN),
    "swap": path("M7.5 20A17.5 17.5 0 0 1 38 13.5M40.5 28A17.5 17.5 0 0 1 10 34.5", **_PEN)
    + path("M39.5 5v10.5H29M8.5 43V32.5H19", **_PEN)
    + circle(24, 24, 6, **_FILL),
    "trash": path("M7 13h34M17 12V6h14v6M11.5 13.5l2 28.5h21l2-28.5M20.5 21.5v12.5"
                  "M27.5 21.5v12.5", **_PEN),
    "tube": rect(8, 18, 32, 12, 6, **_FILL)
    + path("M3 24h42M14 10.5l-2-5M24 10V4M34 10.5l2-5M14 37.5l-2 5M24 38v6M34 37.5l2 5", **_PEN),
    "up": path("M12 30l12-12 12 12", **_HEAVY_PEN),
    "wall": path("M5 5h22v16H5zM31 5h12v16H31zM5 25h12v18H5zM21 25h22v18H21z", **_FILL,
                 stroke="currentColor", stroke_width=2, stroke_linejoin="round"),
}


def glyph(name, x, y, size, colour=CREAM):
    """A pictogram of `size` pixels, centred at x, y."""
    corner = f"translate({number(x - size / 2)},{number(y - size / 2)})"
    return group(_GLYPHS[name], transform=f"{corner} scale({size / BOX:.4f})", color=colour)


def struck_out(drawing, x, y, reach, colour=CREAM, width=4.5):
    """`drawing` with a stroke through it, from corner to corner of a square about x, y, and a
    clear gap on both sides of the stroke."""
    stroke = f"M{number(x - reach)} {number(y - reach)}l{number(2 * reach)} {number(2 * reach)}"
    gap = f"gap-{number(x)}-{number(y)}-{number(reach)}"
    around = {"x": x - 4 * reach, "y": y - 4 * reach, "width": 8 * reach, "height": 8 * reach}
    mask = element("mask", element("rect", **around, fill="#fff"),
                   path(stroke, **stroked("#000", width * 2.2)),
                   id=gap, maskUnits="userSpaceOnUse", **around)
    return mask + group(drawing, mask=f"url(#{gap})") + path(stroke, **stroked(colour, width))
