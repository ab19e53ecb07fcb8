"""Our #includes are relative to the root and respect the layers app > utility > core."""
import pathlib
import re
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[1]
LAYERS = ["core", "utility", "app"]
PUBLIC = set(re.findall(r"\w+/\w+\.h\b", (ROOT / "CMakeLists.txt").read_text()))
PRIVATE = {"core/size_arithmetic.h", "utility/config_syntax.h"}


class IncludeLayers(unittest.TestCase):
    def test_every_library_header_is_installed_or_private(self):
        headers = {path.relative_to(ROOT).as_posix() for layer in LAYERS[:2] for path in (ROOT / layer).glob("*.h")}
        self.assertEqual(PUBLIC, headers - PRIVATE)

    def test_includes(self):
        for path in [path for layer in LAYERS for path in sorted((ROOT / layer).glob("*.[ch]*"))]:
            source, layer = path.relative_to(ROOT).as_posix(), path.parent.name
            visible = [f"{lower}/" for lower in LAYERS[:LAYERS.index(layer) + 1]]
            for bracket, target in re.findall(r'^\s*#\s*include\s*([<"])([^>"]+)', path.read_text(), re.M):
                with self.subTest(f"{source} includes {target}"):
                    self.assertNotEqual(target, "iostream", "adds a static initializer to every program")
                    if bracket == '"':
                        self.assertTrue((ROOT / target).is_file(), "not relative to the root")
                        self.assertIn(target[:target.index("/") + 1], visible, "a higher layer")
                        self.assertFalse(target in PRIVATE and not target.startswith(layer), "private to its library")
                    if source in PUBLIC:
                        self.assertFalse(target.startswith("boost/") or target in PRIVATE, "not for public headers")
