"""Every picture that the program loads: name, size, drawing. A new picture is a new row here."""
from typing import NamedTuple

import effects
import zoom
from buttons import (DOWN, LIT, album_button, double_counter, glyph_icon, hdr_button, letter_icon,
                     quarter_counter, resolution_button, return_button, round_button,
                     shared_badge, shutter, small_button, strip_counter, toggle)
from cameras import camera_button, camera_card
from film import (SCREEN, album_ground, album_splash, broken_picture, camera_splash, down_arrow,
                  empty_album, logo,
                  option_ground, print_frame, setting_ground)
from help import credits_sheet, help_picture
from masks import effect_mask, focus_guide, glyph_mask, hdr_mask, processing
from palette import BODIES, LINE, SIGNAL, TRACK, WHITE

_MASK = (290, 260)
_ROUND = (80, 80)
_SMALL = (51, 51)
_SHUTTER = (109, 109)
_RETURN = (69, 69)
_GUIDE = (153, 124)
_ALBUM_BUTTON = (68, 68)
_ICON = (64, 64)
_RESOLUTION = (190, 44)
_TOGGLE = (148, 44)

# Resource name, pictogram, word
_WHITE_BALANCES = (
    ("auto", "auto", "Auto"), ("sunny", "sun", "Sunny"), ("cloudy", "cloud", "Cloudy"),
    ("fluorescent", "tube", "Fluorescent"), ("tungsten", "bulb", "Tungsten"))
# The rolls on which an effect that cameras of several shots do without is in sight, and which
# those cameras can turn to themselves.
_DIMMED_ROLLS = ("normal", "bw", "beach", "negative", "edge")


class Picture(NamedTuple):
    size: tuple[int, int]
    drawing: str


def _camera_screen():
    yield "logo", (122, 48), logo()
    yield "capture", _SHUTTER, shutter()
    yield "capture_down", _SHUTTER, shutter(down=True)
    for kind, counter, shots in (("quad", quarter_counter, 4), ("act", strip_counter, 4),
                                 ("mix", double_counter, 2)):
        for done in range(shots + 1):
            yield f"capture_{kind}_{done}", _SHUTTER, shutter(counter=counter(done))
    for kind in BODIES:
        yield f"camera_{kind}", (100, 90), camera_button(kind)
    yield "camsel", _ROUND, round_button("swap")
    yield "camsel_p", _ROUND, round_button("swap", DOWN)
    yield "album", _ROUND, round_button("album")
    yield "flash_off", _ROUND, round_button("bolt", off=True)
    yield "flash_on", _ROUND, round_button("bolt", LIT)
    for name, pictogram, _ in _WHITE_BALANCES:
        yield f"wb_{name}_s", _ROUND, round_button(pictogram)
    yield "hdr_off", _ROUND, hdr_button(False)
    yield "hdr", _ROUND, hdr_button(True)
    yield "info", _SMALL, small_button("help", 40)
    yield "icon_setting", _SMALL, small_button("gear", 38)
    yield "capture_small", _RETURN, return_button()
    yield "capture_small_down", _RETURN, return_button(down=True)
    yield "c_guide", _GUIDE, focus_guide(False)
    yield "c_guide_on", _GUIDE, focus_guide(True)


def _bars_and_rolls():
    for level, name in enumerate(zoom.LEVELS):
        yield f"zoom_bar_{name}", (295, 90), zoom.zoom_bar(level)
    for effect in effects.KINDS:
        yield f"effect_roll_{effect}", (246, 246), effects.reel(effect)
    for effect in _DIMMED_ROLLS:
        yield f"effect_roll_{effect}_dim", (246, 246), effects.reel(effect, restricted=True)


def _mask_panel(version):
    for effect in effects.KINDS:
        yield f"effect_{effect}", _MASK, effect_mask(effect)
    yield "flash_on_text", _MASK, glyph_mask("bolt", "Flash on", lit=True)
    yield "flash_off_text", _MASK, glyph_mask("bolt", "Flash off", off=True)
    yield "hdr_text", _MASK, hdr_mask(True)
    yield "hdr_off_text", _MASK, hdr_mask(False)
    yield "camsel_front", _MASK, glyph_mask("person", "Front camera")
    yield "camsel_back", _MASK, glyph_mask("hills", "Back camera")
    for name, pictogram, word in _WHITE_BALANCES:
        yield f"wb_{name}", _MASK, glyph_mask(pictogram, word)
    for level, name in enumerate(zoom.LEVELS):
        yield f"zoom_{name}", _MASK, zoom.zoom_mask(level)
    yield "processing", (290, 56), processing()
    yield "info_help", SCREEN, help_picture()
    yield "info_contents", (340, 212), credits_sheet(version)


def _option_form():
    yield "bg", SCREEN, option_ground()
    yield "down_arrow", (44, 28), down_arrow()
    for kind in BODIES:
        yield f"option_cam_{kind}", (292, 258), camera_card(kind)
    for effect in effects.KINDS:
        yield f"option_eff_{effect}", (170, 170), effects.print_tile(effect)
    for effect in effects.SINGLE_SHOT_ONLY:
        yield f"option_eff_{effect}_dim", (170, 170), effects.print_tile(effect, dim=True)


def _setting_form():
    yield "setting_bg", SCREEN, setting_ground()
    yield "ico_resolution", _ICON, glyph_icon("size")
    yield "ico_soundeffect", _ICON, glyph_icon("sound")
    yield "ico_memory", _ICON, glyph_icon("card")
    yield "ico_facebook", _ICON, letter_icon("F")
    yield "ico_twitter", _ICON, letter_icon("T")
    yield "btn_resolution_n", _RESOLUTION, resolution_button(WHITE, TRACK)
    yield "btn_resolution_n_down", _RESOLUTION, resolution_button(LINE, TRACK)
    yield "btn_resolution_p", _RESOLUTION, resolution_button(SIGNAL, SIGNAL)
    for name, on in (("on", True), ("off", False)):
        yield f"toggle_{name}", _TOGGLE, toggle(on)
        yield f"toggle_{name}_down", _TOGGLE, toggle(on, down=True)


def _album():
    yield "album_bg", SCREEN, album_ground()
    yield "album_frame_w", (692, 437), print_frame(626, 376)
    yield "album_frame", (348, 437), print_frame(282, 376)
    for name, pictogram, idle, down in (
            ("list", "share", "", "_down"), ("trash", "trash", "", "_down"),
            ("walls", "wall", "_n", "_p")):
        yield f"album_{name}{idle}", _ALBUM_BUTTON, album_button(pictogram)
        yield f"album_{name}{down}", _ALBUM_BUTTON, album_button(pictogram, down=True)
    yield "shared", _ROUND, shared_badge()
    yield "ico_mail", _ICON, glyph_icon("mail")
    yield "album_broken", (626, 376), broken_picture()
    yield "album_empty", (632, 382), empty_album()


def _splashes():
    for kind in BODIES:
        yield f"splash_{kind}", SCREEN, camera_splash(kind)
    yield "splash_album", SCREEN, album_splash()


def pictures(version):
    """All pictures by name; `version` is the program's, for the credits."""
    rows = (*_camera_screen(), *_bars_and_rolls(), *_mask_panel(version), *_option_form(),
            *_setting_form(), *_album(), *_splashes())
    table = {name: Picture(size, drawing) for name, size, drawing in rows}
    assert len(table) == len(rows), "two pictures of one name"
    return table
