"""quorvel-check: what it prints, its exit status, and that it changes nothing."""
import difflib
import os
import pathlib

from sample import AFTER, BEFORE, CONFIG, UNORDERED_CONFIG, SampleTest

QUORVEL_CHECK = pathlib.Path(os.environ["QUORVEL"]).with_name("quorvel-check")
DIFF = "".join(difflib.unified_diff(
    BEFORE.splitlines(True), AFTER.splitlines(True), "Info.plist", "Info.plist, updated"))
UNORDERED = 'The names in "Tree" are not in the order of their arrays: each update would add the values again.'
INVALID_LINE = "Error: FileConfig: wrong data in config file Quorvel.cfg in line 1"
ODD_NAME = "'odd\" list"


class QuorvelCheck(SampleTest):
    def test_output_and_status(self):
        temporary = self.directory / "a # b : c"  # A path that no configuration can hold.
        temporary.mkdir()
        environment = dict(os.environ, TMPDIR=str(temporary))
        (self.directory / ODD_NAME).symlink_to("Info.plist")
        for case, config, plist, expected in [
            ("outdated", CONFIG, BEFORE + "\0", (DIFF, "", 1)),
            ("current", CONFIG.rstrip("\n"), AFTER, ("Info.plist is current\n", "", 0)),
            ("odd name", CONFIG.replace("/missing/Info.plist", ODD_NAME), AFTER, (f"{ODD_NAME} is current\n", "", 0)),
            ("unordered", UNORDERED_CONFIG, BEFORE, ("", f"{UNORDERED}\n", 2)),
            ("missing key", CONFIG, BEFORE.replace("ifdProductID", "other"), ("", "Error: Tree[x] not found\n", 2)),
            ("missing file", CONFIG.replace("Info.plist", "none"), BEFORE, ("", "Error: Location not found\n", 2)),
            ("invalid line", "x", BEFORE, ("", f"{INVALID_LINE}\n", 2)),
        ]:
            with self.subTest(case):
                self.write_sample(config, plist)
                self.assertEqual(self.run_program(QUORVEL_CHECK, "Quorvel.cfg", env=environment), expected)
                self.assertEqual((self.modified_files(), [*temporary.iterdir()]), ([], []))

    def test_usage(self):
        usage = "usage: quorvel-check CONFIG\n"
        self.assertEqual(self.run_program(QUORVEL_CHECK, "--help"), (usage, "", 0))
        self.assertEqual(self.run_program(QUORVEL_CHECK, "Quorvel.cfg", "-v"), ("", usage, 2))
