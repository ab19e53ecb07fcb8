"""The executable, run as a user would: what it prints where, its exit status, the bytes it leaves."""
import os
import pathlib
import plistlib
import shutil
import subprocess
import sys
import tempfile
import unittest

BANNER = "Quorvel version 0.0.1.1 for %s.\n"
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

ARRAYS = {"vendorIDs": ("0x0100", "0x0001", "0x0002"), "productIDs": ("0x0200", "0x0010", "0x0020"),
          "readerNames": ("Example Reader", "Reader One", "Reader Two")}
CONFIG = "FileName=:missing list:.::Info.plist\nTree=" + ":".join(ARRAYS) + "\n"
CONFIG += "".join(f"{name}={values[0]}\n" for name, values in ARRAYS.items())


def document(updates):
    text = "<dict>\n"
    for name, (new, *old) in ARRAYS.items():
        entries = "".join(f"\t\t<string>{entry}</string>\n" for entry in [new] * updates + old)
        text += f"\t<key>{name}</key>\n\t<array>\n{entries}\t</array>\n"
    return text + "</dict>\n"


BEFORE, AFTER, TWICE = map(document, range(3))
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


class Run(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory(prefix="quorvel-")
        self.addCleanup(scratch.cleanup)
        self.folder = pathlib.Path(scratch.name)

    def run_tool(self, *arguments, executable=os.environ["QUORVEL"], **options):
        """The (standard output, standard error, exit status) of one run in the scratch folder."""
        done = subprocess.run([executable, *arguments], cwd=self.folder, capture_output=True,
                              text=True, timeout=60, **options)
        return done.stdout, done.stderr, done.returncode

    def outcome(self, config, before, arguments):
        """Standard output, exit status, and the document after a run, whose only change that is."""
        files = {"Quorvel.cfg": config, "Info.plist": before}
        for name, text in files.items():
            (self.folder / name).write_bytes(text.encode())
            os.utime(self.folder / name, ns=(1, 1))
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
            outcome = self.run_tool(*arguments, executable=os.environ["LADDER_PROBE"])
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
            outcome = self.outcome(config, before, arguments)
            self.assertEqual(outcome, (output, 0, after), (arguments, config))

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
            outcome = self.outcome(config, before, arguments)
            self.assertEqual(outcome, (f"Error: {message}\n", 99, before), (arguments, config))

    def test_a_file_that_may_not_be_read_or_written(self):
        for name, text in (("Info.plist", BEFORE), ("Quorvel.cfg", CONFIG)):
            (self.folder / name).write_text(text)
        self.folder.chmod(0o777)
        # Root may do everything, so the program runs as somebody else, from where that one can.
        options = {"executable": shutil.copy(os.environ["QUORVEL"], self.folder),
                   "user": 65534 if os.geteuid() == 0 else None}
        for mode, failure in ((0, "0x6e ERROR_FILE_OPEN"), (0o444, "0x1d ERROR_WRITE")):
            (self.folder / "Info.plist").chmod(mode)
            self.assertEqual(self.run_tool(**options), (f"Exception: {failure}.\n", "", 1))
        self.assertEqual((self.folder / "Info.plist").read_text(), BEFORE)

    @unittest.skipUnless(sys.platform == "linux", "the driver's package is a Linux one")
    def test_a_driver_list_through_a_link(self):
        original = pathlib.Path("/etc/libccid_Info.plist").read_bytes()
        values = {"ifdVendorID": "0xFEED", "ifdProductID": "0xBEEF", "ifdFriendlyName": "New Reader"}
        real, link = self.folder / "real.plist", self.folder / "Info.plist"
        real.write_bytes(original)
        link.symlink_to(real.name)
        config = {"FileName": link, "Tree": ":".join(values), **values}
        (self.folder / "Quorvel.cfg").write_text("".join(f"{k}={v}\n" for k, v in config.items()))
        self.assertEqual(self.run_tool("update"), ("", "", 0))

        patched, modified = real.read_bytes(), real.stat().st_mtime_ns
        added = [f"\t\t<string>{value}</string>\n".encode() for value in values.values()]
        lines = patched.splitlines(True)
        self.assertEqual([line for line in lines if line in added], added)
        self.assertEqual(b"".join(line for line in lines if line not in added), original)
        expected = plistlib.loads(original)
        for name, value in values.items():
            expected[name].insert(0, value)
        self.assertEqual(plistlib.loads(patched), expected)

        output, errors, status = self.run_tool("update", "-v")
        self.assertEqual((output.splitlines()[-1], errors, status), ("Already updated", "", 0))
        self.assertEqual((real.read_bytes(), real.stat().st_mtime_ns), (patched, modified))
        self.assertEqual(os.readlink(link), real.name)
