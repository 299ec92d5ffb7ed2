"""Holds every include of the tree against the table of rooms in docs/architecture.md.

A room is a folder. A row names what the room may include: other rooms, the Osp headers (`<osp>`),
libraries by the beginning of their headers' names, and `system` for those of the operating system.
Itself and the C++ standard library need no word; `*` stands for everything, and `a/*` for all rooms
inside a.
"""
import pathlib
import re
import sys
import tempfile
import unittest

STANDARD = re.compile("[a-z_]+")  # all of the C++ library's headers, and no other library's
SYSTEM = ("cxxabi.h", "dirent.h", "dlfcn.h", "fcntl.h", "grp.h", "linux/", "malloc.h", "netinet/",
          "poll.h", "pty.h", "sched.h", "spawn.h", "sys/", "unistd.h")
GENERATED = {"cmake/product.h"}
INCLUDE = re.compile(r'^\s*#\s*include\s+(["<])([^">]+)[">]', re.MULTILINE)
ROW = re.compile(r"^\| *((?:`[^`]+`[, ]*)+) *\|[^|]*\|([^|]*)\|([^|]*)\|$", re.MULTILINE)


def rows(document):
    """Room -> what it may include, as written."""
    table = {}
    for rooms, others, libraries in ROW.findall(document.split("## Rooms", 1)[1]):
        words = re.findall(r"`([^`]+)`", others + libraries)
        for room in re.findall(r"`([^`]+)`", rooms):
            table[room] = words
    return table


def room_of_include(name):
    """The room that a quoted include names: the platform's own begin with osp/."""
    path = pathlib.PurePosixPath(name)
    return str(("platform" / path if name.startswith("osp/") else path).parent)


def covers(word, room):
    return word == room or (word.endswith("/*") and room.startswith(word[:-1]))


def permission_for(quote, name, room, allowed):
    """The word of `allowed` by which the include is in order, "" for none needed, else None."""
    if quote == "<":
        if STANDARD.fullmatch(name):
            return ""
        if name.startswith("osp/"):
            return "<osp>" if "<osp>" in allowed else None
        if name.startswith(SYSTEM):
            return "system" if "system" in allowed else None
        return next((w for w in allowed if re.match(re.escape(w) + r"\b", name)), None)
    target = room_of_include(name)
    if target == room:
        return ""
    return next((w for w in allowed if covers(w, target)), None)


def problems(root):
    table = rows((root / "docs/architecture.md").read_text())
    found = []
    used = {room: set() for room in table}
    sources = [p for suffix in ("*.h", "*.cpp") for p in root.rglob(suffix)]
    for path in sorted(sources):
        place = path.relative_to(root)
        if place.parts[0] == "build":
            continue
        room = str(place.parent)
        key = next((r for r in table if covers(r, room)), None)
        if key is None:
            found.append(f"{place}: its folder is no room of the table")
            continue
        for quote, name in INCLUDE.findall(path.read_text()):
            if name in GENERATED:
                continue
            if quote == '"':
                target = root / ("platform/" + name if name.startswith("osp/") else name)
                if not target.is_file():
                    found.append(f'{place}: "{name}" names no file by its room')
                    continue
            if "*" in table[key]:
                continue
            word = permission_for(quote, name, room, table[key])
            if word is None:
                found.append(f"{place}: {room} may not include {name}")
            elif word:
                used[key].add(word)
    for room, words in table.items():
        for word in words:
            if word != "*" and word not in used[room]:
                found.append(f"docs/architecture.md: {room} does not include {word}")
    return found


class RoomsTest(unittest.TestCase):
    def test_every_include_is_one_that_its_room_may_have(self):
        self.assertEqual(problems(ROOT), [])

    def test_each_kind_of_wrong_include_is_found(self):
        table = ("## Rooms\n| `app` | entry | `<osp>`, `ui` | `glib` |\n"
                 "| `ui`, `attic` | both | | |\n| `lone` | | `ui` | |\n")
        good = '#include <vector>\n#include <osp/a.h>\n#include <glib.h>\n#include "ui/b.h"\n'
        wrong = {
            "app/sqlite.cpp": ("#include <sqlite3.h>", "app may not include sqlite3.h"),
            "ui/up.cpp": ('#include "app/a.h"', "ui may not include app/a.h"),
            "ui/osp.cpp": ("#include <osp/a.h>", "ui may not include osp/a.h"),
            "app/inner.cpp": ('#include "osp/ui/c.h"', "app may not include osp/ui/c.h"),
            "app/system.cpp": ("#include <unistd.h>", "app may not include unistd.h"),
            "app/bare.cpp": ('#include "a.h"', 'app/bare.cpp: "a.h" names no file'),
            "cellar/x.cpp": ("", "cellar/x.cpp: its folder is no room"),
        }
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            files = {"docs/architecture.md": table, "app/a.h": good, "ui/b.h": "",
                     "platform/osp/ui/c.h": "", "lone/l.h": ""}
            files |= {place: text for place, (text, _) in wrong.items()}
            for place, text in files.items():
                (root / place).parent.mkdir(parents=True, exist_ok=True)
                (root / place).write_text(text)
            found = "\n".join(problems(root))
        for _, complaint in wrong.values():
            self.assertIn(complaint, found)
        self.assertIn("lone does not include ui", found)
        self.assertNotIn("app/a.h:", found)


if __name__ == "__main__":
    ROOT = pathlib.Path(sys.argv.pop(1))
    unittest.main()
