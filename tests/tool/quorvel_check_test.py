"""quorvel-check: what it prints, its exit status, and that it changes nothing."""
import difflib
import os
import pathlib
import shutil

from sample import AFTER, BEFORE, CONFIG, UNORDERED_CONFIG, SampleTest

QUORVEL_CHECK = pathlib.Path(os.environ["QUORVEL"]).with_name("quorvel-check")
DIFF = "".join(difflib.unified_diff(
    BEFORE.splitlines(True), AFTER.splitlines(True), "Info.plist", "Info.plist, updated"))
UNORDERED = 'The names in "Tree" are not in the order of their arrays: each update would add the values again.'
INVALID_VALUE = 'The value of "ifdVendorID" is not valid in XML: write &lt; for "<", and &amp; for "&".'
MISPLACED_KEY = ('"ifdProductID" does not occur first as <key>ifdProductID</key>: '
                 'an update could change another array.')
CANNOT_WRITE = "quorvel-check: cannot write to standard output"
INVALID_LINE = "Error: FileConfig: wrong data in config file Quorvel.cfg in line 1"
ODD_NAME = "'odd\" list"
ODD_KEY = r"a.*\n["
REFERENCES = "&amp;&#1;&#xaF;&_b.1-;"


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
            ("odd key", CONFIG.replace("ifdProductID", ODD_KEY), BEFORE.replace("ifdProductID", ODD_KEY),
             (DIFF.replace("ifdProductID", ODD_KEY), "", 1)),
            ("references", CONFIG.replace("0x0100", REFERENCES.replace("#", "##")), BEFORE,
             (DIFF.replace("0x0100", REFERENCES), "", 1)),
            *((value, CONFIG.replace("0x0100", value.replace("#", "##")), BEFORE, ("", f"{INVALID_VALUE}\n", 2))
              for value in ["a<b", "a</string><string>b", "a & b", "&amp", "&;", "&1;", "&#;", "&#1f;", "&#x;",
                            "&#xg;", "&&amp;#1;"]),
            *((text, CONFIG, BEFORE.replace("<dict>", f"<dict>{text}"), ("", f"{MISPLACED_KEY}\n", 2))
              for text in ["<!-- ifdProductID -->", "<key>ifdProductIDs</key>", "<key>ifdProductID",
                           "ifdProductID <key>ifdProductID</key>"]),
            ("key in a value", CONFIG.replace("0x0100", "ifdProductID"), BEFORE, ("", f"{MISPLACED_KEY}\n", 2)),
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

    def test_output_that_cannot_be_written(self):
        full = [">/dev/full"] if os.path.exists("/dev/full") else []
        for plist in BEFORE, AFTER:
            self.write_sample(plist=plist)
            for config in "Quorvel.cfg", "--help":
                for redirection in [">&-", *full]:
                    with self.subTest(plist=plist, config=config, redirection=redirection):
                        command = f'exec "$0" "$1" {redirection}'
                        self.assertEqual(self.run_program("sh", "-c", command, QUORVEL_CHECK, config),
                                         ("", f"{CANNOT_WRITE}\n", 2))

    def test_missing_diff(self):
        self.write_sample()
        commands = self.directory / "commands"
        commands.mkdir()
        for name in "awk", "cat", "dirname", "grep", "mktemp", "rm", "sed", "sh", "tail", "tr":
            (commands / name).symlink_to(shutil.which(name))
        output, errors, status = self.run_program(QUORVEL_CHECK, "Quorvel.cfg", env={"PATH": str(commands)})
        self.assertEqual((output, errors.splitlines()[-1], status), ("", "quorvel-check: diff has failed", 2))

    def test_a_signal_during_mktemp_leaves_no_directory(self):
        self.write_sample()
        temporary = self.directory / "temporary"
        temporary.mkdir()
        (self.directory / "mktemp").write_text(
            f'#!/bin/sh\ncreated=$({shutil.which("mktemp")} "$@"); kill -TERM 0; echo "$created"\n')
        (self.directory / "mktemp").chmod(0o755)
        environment = dict(os.environ, PATH=f"{self.directory}:{os.environ['PATH']}", TMPDIR=str(temporary))
        self.run_program(QUORVEL_CHECK, "Quorvel.cfg", env=environment, start_new_session=True)
        self.assertEqual([*temporary.iterdir()], [])
