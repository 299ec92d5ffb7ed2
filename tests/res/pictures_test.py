"""The pictures under /Res/: all there, decodable, and made for the places that show them."""
import hashlib
import re
import subprocess
import sys
import unittest
from pathlib import Path

from png_file import PngFile

CAMERAS = "kivo dslr action quad mix ts"
EFFECTS = "normal fisheye concave bw beach fall sepia negative edge mirror"
WHITE_BALANCES = "auto sunny cloudy fluorescent tungsten"
ZOOM_LEVELS = "1x 1_5x 2x 2_5x 3x 3_5x max"

# Size of the place, then names; * stands for each of the words that follow. Written down from the
# rectangles of the controls and forms, not from the artwork's own table.
PLACES = (
    ((122, 48), "logo"),
    ((109, 109), "capture"), ((109, 109), "capture_down"),
    ((109, 109), "capture_quad_*", "0 1 2 3 4"),
    ((109, 109), "capture_act_*", "0 1 2 3 4"),
    ((109, 109), "capture_mix_*", "0 1 2"),
    ((100, 90), "camera_*", CAMERAS),
    ((80, 80), "*", "camsel camsel_p album flash_off flash_on hdr_off hdr shared"),
    ((80, 80), "wb_*_s", WHITE_BALANCES),
    ((295, 90), "zoom_bar_*", ZOOM_LEVELS),
    ((246, 246), "effect_roll_*", EFFECTS),
    ((246, 246), "effect_roll_*_dim", "normal bw beach negative edge"),
    ((153, 124), "*", "c_guide c_guide_on"),
    ((51, 51), "*", "info icon_setting"),
    ((69, 69), "*", "capture_small capture_small_down"),
    ((290, 260), "effect_*", EFFECTS),
    ((290, 260), "*", "flash_on_text flash_off_text hdr_text hdr_off_text"),
    ((290, 260), "camsel_*", "front back"),
    ((290, 260), "wb_*", WHITE_BALANCES),
    ((290, 260), "zoom_*", ZOOM_LEVELS),
    ((290, 56), "processing"),  # between 255, 212 and the row below, centred as the values are
    ((800, 480), "info_help"),
    ((340, 212), "info_contents"),  # where a press goes back to the help
    ((292, 258), "option_cam_*", CAMERAS),
    ((170, 170), "option_eff_*", EFFECTS),
    ((170, 170), "option_eff_*_dim", "fisheye concave mirror"),
    ((44, 28), "down_arrow"),
    ((64, 64), "ico_*", "resolution soundeffect twitter facebook memory"),
    ((190, 44), "btn_resolution_*", "n p n_down"),
    ((148, 44), "toggle_*", "on on_down off off_down"),
    ((68, 68), "album_*", "list list_down trash trash_down walls_n walls_p"),
    ((64, 64), "ico_mail"), ((626, 376), "album_broken"), ((632, 382), "album_empty"),
    ((348, 437), "album_frame"), ((692, 437), "album_frame_w"),
    ((800, 480), "splash_*", CAMERAS + " album"),
    ((800, 480), "*", "bg setting_bg album_bg"),
)
# Drawings that stand free: nothing of them may be cut off at the edge. A trace of shadow may.
FREE_STANDING = re.compile(
    r"capture|camera_|camsel|flash_|hdr|wb_|shared$|album$|album_(list|trash|walls)|zoom_(?!bar)"
    r"|effect_|c_guide|info$|icon_|ico_|logo|toggle|option_|down_arrow|processing")
FAINTEST_OPACITY = 48
SOURCE_FOLDERS = "app capture effects ui album share host platform"


def sizes():
    return {pattern.replace("*", word): size
            for size, pattern, *words in PLACES for word in (words or [pattern])[0].split()}


class PicturesTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.pictures = {}
        for name in sizes():
            path = RESOURCES / f"{name}.png"
            if path.exists():
                try:
                    cls.pictures[name] = PngFile(path)
                except ValueError as error:
                    raise ValueError(f"{path.name}: {error}") from error

    def test_every_picture_has_the_size_of_its_place(self):
        for name, size in sizes().items():
            with self.subTest(name):
                picture = self.pictures.get(name)
                self.assertIsNotNone(picture, "is missing")
                self.assertEqual((picture.width, picture.height), size)

    def test_no_picture_is_drawn_that_has_no_place(self):
        script = SOURCES / "res/artwork/draw.py"
        listed = subprocess.run([sys.executable, "-B", script, "list"], check=True,
                                capture_output=True, text=True).stdout
        self.assertEqual({line.split()[0] for line in listed.splitlines()} - set(sizes()), set())

    def test_everything_that_the_program_names_is_there(self):
        named = set()
        for folder in SOURCE_FOLDERS.split():
            for file in (SOURCES / folder).rglob("*.[ch]*"):
                named |= set(re.findall(r'"/Res/(\w+\.\w+)"', file.read_text(encoding="utf-8")))
        self.assertGreater(len(named), 90, "the search finds no names any more")
        self.assertEqual({name for name in named if not (RESOURCES / name).is_file()}, set())

    def test_no_two_pictures_are_the_same(self):
        seen = {}
        for name in self.pictures:
            content = hashlib.sha256((RESOURCES / f"{name}.png").read_bytes()).digest()
            self.assertIsNone(seen.get(content), f"{name} is a copy")
            seen[content] = name

    def test_nothing_is_cut_off_at_the_edge(self):
        for name, picture in self.pictures.items():
            if not FREE_STANDING.match(name):
                continue
            with self.subTest(name):
                self.assertEqual(picture.channels, 4)
                opacity = picture.plane(3)
                sides = bytes(row[x] for row in opacity for x in (0, -1))
                self.assertLess(max(opacity[0] + opacity[-1] + sides), FAINTEST_OPACITY)
                self.assertEqual(max(map(max, opacity)), 255, "there is nothing to see")


class DevelopedScenesTest(unittest.TestCase):
    """Each effect's picture shows that effect. Looked at well inside of the print."""

    @staticmethod
    def scene(effect):
        rows = PngFile(RESOURCES / f"effect_{effect}.png").pixels()
        return [[pixel[:3] for pixel in row[64:226]] for row in rows[20:140]]

    def average(self, effect):
        pixels = [pixel for row in self.scene(effect) for pixel in row]
        return [sum(channel) / len(pixels) for channel in zip(*pixels)]

    def largest_difference(self, first, second):
        return max(abs(a - b) for above, below in zip(first, second)
                   for one, other in zip(above, below) for a, b in zip(one, other))

    def test_black_and_white_is_grey_and_sepia_is_brown(self):
        self.assertTrue(all(max(pixel) - min(pixel) <= 2 for row in self.scene("bw")
                            for pixel in row))
        red, green, blue = self.average("sepia")
        self.assertGreater(red, green + 8)
        self.assertGreater(green, blue + 8)

    def test_negative_is_the_opposite_of_normal(self):
        opposite = [[tuple(255 - value for value in pixel) for pixel in row]
                    for row in self.scene("normal")]
        self.assertLessEqual(self.largest_difference(opposite, self.scene("negative")), 2)

    def test_mirror_has_two_equal_halves_and_normal_has_not(self):
        for effect, check in (("mirror", self.assertLess), ("normal", self.assertGreater)):
            scene = self.scene(effect)
            check(self.largest_difference(scene, [row[::-1] for row in scene]), 40, effect)

    def test_edge_is_lines_on_white(self):
        self.assertGreater(min(self.average("edge")), 200)
        dark = sum(min(pixel) < 120 for row in self.scene("edge") for pixel in row)
        self.assertGreater(dark, 400, "the lines are too thin to be seen")

    def test_beach_and_fall_have_the_colour_of_their_season(self):
        normal, beach, fall = map(self.average, ("normal", "beach", "fall"))
        self.assertGreater(beach[1] - beach[0], normal[1] - normal[0])
        self.assertGreater(fall[0] - fall[1], normal[0] - normal[1])

    def test_fisheye_and_concave_bend_in_opposite_ways(self):
        # The sails are the red and yellow of the picture: they grow and shrink.
        def sails(effect):
            return sum(red > blue + 100 for row in self.scene(effect) for red, _, blue in row)
        self.assertGreater(sails("fisheye"), sails("normal"))
        self.assertLess(sails("concave"), sails("normal"))


if __name__ == "__main__":
    RESOURCES, SOURCES = map(Path, sys.argv[1:])
    unittest.main(argv=sys.argv[:1])
