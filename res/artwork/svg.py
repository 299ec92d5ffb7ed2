"""SVG in the few elements that the artwork needs. A drawing is a string of elements."""
import math
import re
from xml.sax.saxutils import escape, quoteattr


def number(value):
    """A coordinate to a hundredth of a pixel, without a trail of zeros."""
    return f"{round(value, 2) + 0:g}" if isinstance(value, float) else str(value)


def element(name, *content, **attributes):
    """Underscores in attribute names stand for hyphens; None leaves an attribute out."""
    written = "".join(
        f" {key.replace('_', '-')}={quoteattr(number(value))}"
        for key, value in attributes.items()
        if value is not None
    )
    inner = "".join(content)
    return f"<{name}{written}>{inner}</{name}>" if inner else f"<{name}{written}/>"


def circle(x, y, radius, **paint):
    return element("circle", cx=x, cy=y, r=radius, **paint)


def rect(x, y, width, height, radius=None, **paint):
    return element("rect", x=x, y=y, width=width, height=height, rx=radius, **paint)


def path(data, **paint):
    return element("path", d=data, **paint)


def group(*content, **attributes):
    return element("g", *content, **attributes)


def at(x, y, *content, scale=1):
    """`content` with its origin at x, y."""
    turn = "" if scale == 1 else f" scale({scale:.4f})"
    return group(*content, transform=f"translate({number(x)},{number(y)}){turn}")


def rotated(degrees, x, y, *content):
    """`content` turned clockwise about x, y."""
    return group(*content, transform=f"rotate({degrees} {number(x)} {number(y)})")


def stroked(colour, width, **paint):
    """The attributes of a round pen without a filling."""
    return {"fill": "none", "stroke": colour, "stroke_width": width,
            "stroke_linecap": "round", "stroke_linejoin": "round"} | paint


def polar(x, y, radius, degrees):
    """The point at an angle clockwise from three o'clock, as path data."""
    angle = math.radians(degrees)
    return f"{x + radius * math.cos(angle):.2f} {y + radius * math.sin(angle):.2f}"


def words(x, y, text, size, colour, bold=True, anchor="middle", **attributes):
    """One line of type; y is the base line, size the em."""
    return element("text", escape(text), x=x, y=y, font_family="Cabin", font_size=size,
                   font_weight=700 if bold else 400, fill=colour, text_anchor=anchor, **attributes)


def shadow(*content):
    """Lifts what lies over the preview."""
    return group(*content, filter="url(#shadow)")


def deep_shadow(*content):
    """Lifts prints off the desk."""
    return group(*content, filter="url(#deep-shadow)")


def shot(name, x, y, width, height, radius):
    """The developed scene of an effect, filling a rounded window."""
    window = f"window-{number(x)}-{number(y)}-{number(width)}"
    return element("clipPath", rect(x, y, width, height, radius), id=window) + element(
        "image", href=f"shots/{name}.png", x=x, y=y, width=width, height=height,
        preserveAspectRatio="xMidYMid slice", clip_path=f"url(#{window})")


def shots_in(drawing):
    """The developed scenes that a drawing shows."""
    return sorted(set(re.findall(r'href="shots/(\w+)\.png"', drawing)))


def _shadow_filter(name, margin, blur, drop):
    # rsvg-convert of Debian 12 drops elements that use feDropShadow.
    return element(
        "filter",
        element("feGaussianBlur", **{"in": "SourceAlpha"}, stdDeviation=blur),
        element("feOffset", dy=drop),
        element("feComponentTransfer", element("feFuncA", type="linear", slope=0.5)),
        element("feMerge", element("feMergeNode"),
                element("feMergeNode", **{"in": "SourceGraphic"})),
        id=name, x=f"-{margin}%", y=f"-{margin}%",
        width=f"{100 + 2 * margin}%", height=f"{100 + 2 * margin}%")


def _gradient(kind, name, stops, **geometry):
    return element(kind, *(element("stop", offset=offset, stop_color=colour, stop_opacity=opacity)
                           for offset, colour, opacity in stops), id=name, **geometry)


_DOWNWARDS = {"x1": 0, "y1": 0, "x2": 0, "y2": 1}
_DEFINITIONS = {
    "shadow": _shadow_filter("shadow", 30, 2, 1.5),
    "deep-shadow": _shadow_filter("deep-shadow", 25, 6, 5),
    "soft": element("filter", element("feGaussianBlur", stdDeviation=7), id="soft",
                    x="-50%", y="-150%", width="200%", height="400%"),
    "plastic": _gradient("linearGradient", "plastic", [
        (0, "#fff", 0.22), (0.4, "#fff", 0), (1, "#000", 0.16)], **_DOWNWARDS),
    "glass": _gradient("radialGradient", "glass", [
        (0, "#5b7fa6", 1), (0.45, "#27385a", 1), (1, "#0e1220", 1)], cx=0.4, cy=0.35, r=0.8),
    "barrel": _gradient("linearGradient", "barrel", [
        (0, "#000", 0.55), (0.35, "#fff", 0.1), (0.65, "#fff", 0.1), (1, "#000", 0.55)]),
    "desk": _gradient("radialGradient", "desk", [
        (0, "#3d3731", 1), (1, "#1f1c19", 1)], cx=0.45, cy=0.5, r=0.8),
}


def document(width, height, drawing):
    """A whole file, with the definitions that its drawing uses."""
    used = "".join(text for name, text in _DEFINITIONS.items() if f"url(#{name})" in drawing)
    svg = element("svg", element("defs", used), drawing, xmlns="http://www.w3.org/2000/svg",
                  width=width, height=height, viewBox=f"0 0 {width} {height}")
    return svg.replace("><", ">\n<") + "\n"
