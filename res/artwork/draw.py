#!/usr/bin/python3
"""Writes the artwork as SVG files, one a picture.

draw.py list             one line a picture: its name, then the developed scenes it shows
draw.py write FOLDER VERSION
"""
import sys
from pathlib import Path

from catalog import pictures
from svg import document, shots_in


def list_pictures():
    for name, picture in pictures(version="").items():
        print(name, *shots_in(picture.drawing))


def write_pictures(folder, version):
    """Leaves files alone that would not change, so that only changed pictures are rendered."""
    for name, picture in pictures(version).items():
        file = Path(folder, f"{name}.svg")
        text = document(*picture.size, picture.drawing)
        if not file.exists() or file.read_text(encoding="utf-8") != text:
            file.write_text(text, encoding="utf-8")


def main(arguments):
    match arguments:
        case ["list"]:
            list_pictures()
        case ["write", folder, version]:
            write_pictures(folder, version)
        case _:
            sys.exit(__doc__)


if __name__ == "__main__":
    main(sys.argv[1:])
