"""The sounds under /Res/: decodable, short, at once audible, and different."""
import array
import itertools
import math
import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

RATE_HZ = 48000
SHUTTERS = ("kivo.mp3", "dslr.mp3", "others.mp3")
TICKS = ("snd_change_roll.wav", "snd_change_camera.wav", "snd_change_effect.wav",
         "snd_change_album.wav")
LONGEST_MS = {"dslr.mp3": 450}
# What the format itself puts before the first sound: 529 samples of the decoder and 576 of the
# encoder. Players that know it skip it.
MP3_DELAY_MS = 1105 * 1000 / RATE_HZ
# Nothing quieter than this part of the peak is heard beside it.
AUDIBLE = 0.02


def decode(name):
    raw = subprocess.run(
        ["sox", "-D", RESOURCES / name, "-t", "raw", "-e", "signed", "-b", "16", "-"],
        check=True, capture_output=True).stdout
    return [sample / 32768 for sample in array.array("h", raw)]


class SoundsTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.sounds = {name: decode(name) for name in SHUTTERS + TICKS}

    def peak(self, name):
        return max(map(abs, self.sounds[name]))

    def audible_ms(self, name):
        """When the sound begins and ends, from the start of the file."""
        faintest = AUDIBLE * self.peak(name)
        heard = [i for i, sample in enumerate(self.sounds[name]) if abs(sample) >= faintest]
        return heard[0] * 1000 / RATE_HZ, heard[-1] * 1000 / RATE_HZ

    def crossings_per_second(self, name):
        """A measure of how bright a sound is."""
        begin, end = (round(ms * RATE_HZ / 1000) for ms in self.audible_ms(name))
        part = self.sounds[name][begin:end]
        return sum(a * b < 0 for a, b in itertools.pairwise(part)) * RATE_HZ / len(part)

    def test_all_are_mono_at_the_common_rate(self):
        for name in self.sounds:
            with self.subTest(name):
                told = subprocess.run(["sox", "--i", RESOURCES / name], check=True,
                                      capture_output=True, text=True).stdout
                self.assertRegex(told, r"Channels +: 1\n")
                self.assertRegex(told, rf"Sample Rate +: {RATE_HZ}\n")

    def test_each_is_heard_at_once_and_is_over_soon(self):
        for name in self.sounds:
            with self.subTest(name):
                begin, end = self.audible_ms(name)
                delay = MP3_DELAY_MS if name.endswith(".mp3") else 0
                self.assertLess(begin, delay + 2)
                self.assertLess(end, LONGEST_MS.get(name, 250))
                # Played to its end, not chopped.
                self.assertEqual(self.sounds[name][-1], 0)

    def test_levels_are_pleasant(self):
        for name in self.sounds:
            with self.subTest(name):
                level_db = 20 * math.log10(self.peak(name))
                self.assertLess(level_db, -2.5)
                self.assertGreater(level_db, -10)
        # The third shutter is the softest, and ticks stay below the loud ones.
        for name in (*TICKS, "others.mp3"):
            self.assertLess(self.peak(name), 0.8 * min(self.peak("kivo.mp3"),
                                                       self.peak("dslr.mp3")))

    def test_shutters_are_told_apart(self):
        light, heavy, soft = map(self.crossings_per_second, SHUTTERS)
        self.assertGreater(light, 2 * heavy)
        self.assertGreater(light, 2 * soft)
        self.assertGreater(self.audible_ms("dslr.mp3")[1], 1.5 * self.audible_ms("kivo.mp3")[1])

    def test_a_sound_is_the_same_at_every_build(self):
        script = SOURCES / "res/sounds/mix.py"
        with tempfile.TemporaryDirectory() as folder:
            for name in self.sounds:
                again = Path(folder, name)
                subprocess.run([sys.executable, "-B", script, again], check=True)
                self.assertEqual(again.read_bytes(), (RESOURCES / name).read_bytes(), name)

    def test_there_is_no_sound_that_nothing_plays(self):
        made = {file.name for file in RESOURCES.iterdir() if re.search(r"\.(mp3|wav)$", file.name)}
        self.assertEqual(made, set(self.sounds))


if __name__ == "__main__":
    RESOURCES, SOURCES = map(Path, sys.argv[1:])
    unittest.main(argv=sys.argv[:1])
