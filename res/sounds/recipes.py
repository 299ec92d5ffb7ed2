"""What the sounds are made of: short strokes of noise and of tones that die away."""
from typing import NamedTuple


class Stroke(NamedTuple):
    """One thing that hits another."""

    start_ms: float
    length_ms: float  # until it has faded by 100 dB; half of that is heard
    level_db: float
    source: str  # what SoX's synth makes
    filters: str = ""


class Recipe(NamedTuple):
    peak_db: float
    strokes: tuple[Stroke, ...]


RECIPES = {
    # A light plastic toy: click, and the spring comes back with a clack.
    "kivo.mp3": Recipe(-3, (
        Stroke(0, 16, 0, "whitenoise", "bandpass 4200 1.2q"),
        Stroke(0, 55, -6, "sine 1850"),
        Stroke(0, 30, -13, "sine 3100"),
        Stroke(78, 24, -2, "whitenoise", "bandpass 2500 1.0q"),
        Stroke(78, 85, -6, "sine 960"),
        Stroke(79, 45, -12, "sine 2230"),
    )),
    # A heavy mirror goes up, the curtain runs, the mirror falls back.
    "dslr.mp3": Recipe(-3, (
        Stroke(0, 210, 0, "sine 150-72"),
        Stroke(0, 120, -9, "sine 310"),
        Stroke(0, 60, -1, "whitenoise", "bandpass 1100 0.8q"),
        Stroke(42, 40, -5, "whitenoise", "bandpass 5200 1.0q"),
        Stroke(66, 110, -18, "pinknoise", "bandpass 2600 0.7q"),
        Stroke(160, 240, -2, "sine 120-58"),
        Stroke(160, 130, -11, "sine 255"),
        Stroke(160, 70, -4, "whitenoise", "bandpass 850 0.8q"),
    )),
    # A leaf shutter: one soft, round tock.
    "others.mp3": Recipe(-6, (
        Stroke(0, 22, -8, "whitenoise", "bandpass 2000 0.8q"),
        Stroke(0, 150, 0, "sine 540"),
        Stroke(0, 80, -10, "sine 1080"),
        Stroke(52, 120, -8, "sine 410"),
    )),
    # The ratchet of a roll, which may turn several steps in a row.
    "snd_change_roll.wav": Recipe(-6, (
        Stroke(0, 7, -4, "whitenoise", "bandpass 5000 1.0q"),
        Stroke(0, 36, 0, "sine 2350"),
    )),
    # A camera slides into its place: two deep steps of a ratchet.
    "snd_change_camera.wav": Recipe(-6, (
        Stroke(0, 11, -6, "whitenoise", "bandpass 3000 1.0q"),
        Stroke(0, 70, -2, "sine 880"),
        Stroke(60, 15, -4, "whitenoise", "bandpass 2200 1.0q"),
        Stroke(60, 120, 0, "sine 590"),
    )),
    # The film moves on by one picture.
    "snd_change_effect.wav": Recipe(-6, (
        Stroke(0, 9, -6, "whitenoise", "bandpass 4200 1.0q"),
        Stroke(0, 48, -2, "sine 1560"),
        Stroke(36, 55, -5, "sine 1240"),
    )),
    # A print slides off the pile.
    "snd_change_album.wav": Recipe(-9, (
        Stroke(0, 340, 0, "pinknoise", "bandpass 2400 0.6q fade h 0.012"),
        Stroke(0, 160, -6, "whitenoise", "bandpass 5200 0.8q fade h 0.012"),
        Stroke(140, 130, -10, "sine 230"),
    )),
}
