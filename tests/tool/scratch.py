"""What the tests of the executable share: a scratch folder, and a list to update in it."""
import os
import pathlib
import subprocess
import tempfile
import unittest

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


class ScratchRun(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory(prefix="quorvel-")
        self.addCleanup(scratch.cleanup)
        self.folder = pathlib.Path(scratch.name)

    def run_tool(self, *arguments, executable=os.environ["QUORVEL"], **options):
        """The (standard output, standard error, exit status) of one run in the scratch folder."""
        done = subprocess.run([executable, *arguments], cwd=self.folder, capture_output=True,
                              text=True, timeout=60, **options)
        return done.stdout, done.stderr, done.returncode

    def write_files(self, before=BEFORE, config=CONFIG):
        for name, text in (("Quorvel.cfg", config), ("Info.plist", before)):
            (self.folder / name).write_bytes(text.encode())
            os.utime(self.folder / name, ns=(1, 1))
