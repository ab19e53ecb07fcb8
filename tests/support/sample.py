"""The sample of examples/ before and after its update, and a test case that runs programs on it."""
import os
import pathlib
import subprocess
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
CONFIG = (ROOT / "examples/reader.cfg").read_text()
UNORDERED_CONFIG = CONFIG.replace("ifdVendorID:ifdProductID", "ifdProductID:ifdVendorID")
VALUES = {"ifdVendorID": "0x0100", "ifdProductID": "0x0200", "ifdFriendlyName": "Example Reader #2"}
BEFORE = (ROOT / "examples/Info.plist").read_text()


def updated(plist):
    """Returns the property list with each value at the head of the array of its key."""
    for key, value in VALUES.items():
        array = f"<key>{key}</key>\n\t<array>\n"
        plist = plist.replace(array, f"{array}\t\t<string>{value}</string>\n")
    return plist


AFTER = updated(BEFORE)


class SampleTest(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        temporary = tempfile.TemporaryDirectory(prefix="quorvel-")
        self.addCleanup(temporary.cleanup)
        self.directory = pathlib.Path(temporary.name)

    def write_sample(self, config=CONFIG, plist=BEFORE):
        for name, contents in ("Quorvel.cfg", config), ("Info.plist", plist):
            (self.directory / name).write_bytes(contents.encode())
            os.utime(self.directory / name, ns=(1, 1))

    def read_plist(self):
        return (self.directory / "Info.plist").read_bytes().decode()

    def modified_files(self):
        """Returns the names of the files modified since write_sample."""
        return [path.name for path in self.directory.iterdir() if path.is_file() and path.stat().st_mtime_ns != 1]

    def run_program(self, *command, timeout=60, **options):
        """Runs the command in the directory; returns standard output, standard error and exit status."""
        done = subprocess.run(command, cwd=self.directory, capture_output=True, text=True, timeout=timeout, **options)
        return done.stdout, done.stderr, done.returncode
