"""The executable, run as a user would: what it prints where, its exit status, the bytes it leaves."""
import os
import pathlib
import plistlib
import sys
import unittest

from scratch import AFTER, BEFORE, CONFIG, TWICE, ScratchRun

BANNER = f"Quorvel version {os.environ['VERSION']} for %s.\n"
HINT = "Use parameter help (-h) to see help on usage.\n"
HELP = BANNER + """\
Usage: Quorvel <options> <command> <command parameters>

Commands
--------
 Update CCID config
    update

  General options:
  ----------------
    -v  - verbose mode.

  Command parameters:
  --------------
    -config=...         - configuration file name.
    Default configuration file Quorvel.cfg.
"""

LOADED = """\
Loading config from path "Quorvel.cfg"...
Locations to check: :missing list:.::Info.plist
Checking config location path ""...
Checking config location path "missing list"...
Checking config location path "."...
Checking config location path "Info.plist"...
File loaded, size: """
INSERTED = """\
Searching to insert "0x0100"
Searching to insert "0x0200"
Searching to insert "Example Reader"
Data updated, size: """


class Tool(ScratchRun):
    def outcome(self, config, before, arguments):
        """Standard output, exit status, and the document after a run, whose only change that is."""
        self.write_files(before, config)
        output, errors, status = self.run_tool(*arguments)
        after = (self.folder / "Info.plist").read_bytes().decode()
        written = {path.name for path in self.folder.iterdir() if path.stat().st_mtime_ns != 1}
        self.assertEqual((errors, written), ("", {"Info.plist"} if after != before else set()))
        return output, status, after

    def test_argument_errors_and_every_kind_of_failure(self):
        rows = [
            *(([word, "any", "-x"], HELP, "", 0) for word in ("-h", "-help", "--help")),
            (["update", "-v", "-V", "-x"], "", BANNER + 'Error: Unknown option "V"\n' + HINT, 1),
            *((words, "", BANNER + f'Error: Unknown parameter "{words[1]}"\n' + HINT, 1) for words in
              (["-v", "update%s"], ["update", "-config"], ["restore", "-"], ["update", "vv"])),
            (["restore", "-config=a", "-v", "-config=b=c"], 'Loading config from path "b=c"...\n'
             "Error: FileConfig: unable to open config file b=c\n", "", 99),
            (["int"], "Error number 0xffffffff occured.\n", "", 1),
            (["unsigned long"], "Error number 0x80090020 occured.\n", "", 1),
            (["qel::Exception"], "Exception: 0x6e text.\n", "", 1),
            (["mox::FileException"], "Error: of files\n", "", 99),
            (["std::exception"], "Exception: of the library.\n", "", 1),
            (["anything else"], "Exception occured.\n", "", 1),
        ]
        for arguments, *expected in rows:
            # The probe throws what its configuration names.
            (self.folder / "Quorvel.cfg").write_text("Throw=" + arguments[0])
            outcome = self.run_tool(*arguments, executable=os.environ["EXCEPTION_EXIT_PROBE"])
            self.assertEqual(outcome, tuple(expected), arguments)

    def test_updates(self):
        partly = AFTER.replace("0x0200", "0x02000")
        rows = [
            ([], CONFIG, "\0\r\n" + BEFORE, "", "\0\r\n" + AFTER),
            (["-v"], CONFIG.replace("Tree=", "Tree=vendorIDs:"), "\0" + AFTER, "", "\0" + AFTER),
            (["-config=a", "-v"], CONFIG, BEFORE, LOADED + "305\n" + INSERTED + "391\n", AFTER),
            (["update", "-v"], CONFIG, AFTER,
             LOADED + '391\nFound "vendorIDs" at position 40\nFound "productIDs" at position 160\n'
             'Found "readerNames" at position 281\nAlready updated\n', AFTER),
            (["update", "-v"], CONFIG, partly,
             LOADED + '392\nFound "vendorIDs" at position 40\nFound "readerNames" at position 282\n' +
             INSERTED + "478\n", TWICE.replace("0x0200", "0x02000").replace("0x02000", "0x0200", 1)),
            ([], CONFIG.replace("vendorIDs:productIDs", "productIDs:vendorIDs"), AFTER, "", TWICE),
        ]
        for arguments, config, before, output, after in rows:
            self.assertEqual(self.outcome(config, before, arguments), (output, 0, after), arguments)

    def test_refusals(self):
        rows = [
            (CONFIG, BEFORE.replace("readerNames", "names"), "Tree[x] not found"),
            (CONFIG.replace("::Info.plist\n", "\n"), BEFORE, "Location not found"),
            (CONFIG.replace("Tree", "tree"), "", 'Empty name in "Tree"'),
            (CONFIG.replace("=0x0200", "="), AFTER, 'No value for "productIDs"'),
            (CONFIG + "x", BEFORE, "FileConfig: wrong data in config file Quorvel.cfg in line 6"),
            (CONFIG, BEFORE, "FileConfig: unable to open config file ", "update", "-config="),
            (CONFIG, BEFORE, "FileConfig: error reading config file .", "update", "-config=."),
            (CONFIG, BEFORE, "Restore not implemented", "restore"),
        ]
        for config, before, message, *arguments in rows:
            expected = f"Error: {message}\n", 99, before
            self.assertEqual(self.outcome(config, before, arguments), expected, config)

    @unittest.skipUnless(sys.platform == "linux", "the driver's package is a Linux one")
    def test_a_driver_list(self):
        original = pathlib.Path("/etc/libccid_Info.plist").read_bytes()
        values = {"ifdVendorID": "0xFEED", "ifdProductID": "0xBEEF", "ifdFriendlyName": "New Reader"}
        (self.folder / "Info.plist").write_bytes(original)
        config = {"FileName": "Info.plist", "Tree": ":".join(values), **values}
        (self.folder / "Quorvel.cfg").write_text("".join(f"{k}={v}\n" for k, v in config.items()))
        self.assertEqual(self.run_tool("update"), ("", "", 0))

        patched = (self.folder / "Info.plist").read_bytes()
        added = [f"\t\t<string>{value}</string>\n".encode() for value in values.values()]
        kept = [line for line in patched.splitlines(True) if line not in added]
        self.assertEqual(b"".join(kept), original)
        expected = plistlib.loads(original)
        for name, value in values.items():
            expected[name].insert(0, value)
        self.assertEqual(plistlib.loads(patched), expected)
        self.assertEqual(self.run_tool("update", "-v")[0].splitlines()[-1], "Already updated")
