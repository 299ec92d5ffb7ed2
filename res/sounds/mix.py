#!/usr/bin/python3
"""Renders a sound from its recipe with SoX.

mix.py list
mix.py FILE              its name says which sound and which format
"""
import subprocess
import sys
from pathlib import Path

from recipes import RECIPES

# Repeatable noise and no dither: the same file at every build.
SOX = "sox -D -R"
# The delay of MP3 is a number of samples, so the highest rate starts soonest.
RATE_HZ = 48000
# Low rates of MP3 smear a stroke into the silence before it.
ENCODINGS = {".mp3": ["-C", "320"], ".wav": ["-b", "16"]}


def stroke_command(stroke):
    """A stroke as SoX reads it from a pipe: at full strength at once, then dying away."""
    length, start = stroke.length_ms / 1000, stroke.start_ms / 1000
    return (f"|{SOX} -r {RATE_HZ} -n -p synth {length:g} {stroke.source} gain -6 {stroke.filters}"
            f" gain -n {stroke.level_db:g} fade l 0 {length:g} {length:g} pad {start:g}")


def mix(file):
    recipe = RECIPES[file.name]
    strokes = [stroke_command(stroke) for stroke in recipe.strokes]
    # The silence at the end lets decoders of MP3 play the last stroke out.
    subprocess.run(
        [*SOX.split(), "-m", *strokes, *ENCODINGS[file.suffix], "--comment", "", str(file),
         "highpass", "40", "gain", "-n", f"{recipe.peak_db:g}", "pad", "0", "0.025"], check=True)


if __name__ == "__main__":
    match sys.argv[1:]:
        case ["list"]:
            print(*RECIPES, sep="\n")
        case [file]:
            mix(Path(file))
        case _:
            sys.exit(__doc__)
