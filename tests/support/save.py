"""A test case that saves the sample under strace."""
import os
import pathlib
import shutil
import subprocess
import unittest

from sample import BEFORE, SampleTest

QUORVEL = os.environ["QUORVEL"]
SANITIZED = b"__asan" in pathlib.Path(QUORVEL).read_bytes()
with_strace = unittest.skipIf(SANITIZED or not shutil.which("strace"), "needs strace and an unsanitized build")

HARD_LINK = "ln Info.plist second"  # Makes the tool write in place.


class SaveTest(SampleTest):
    def prepare(self, commands, padding=""):
        """Prepares a new directory with shell commands."""
        self.setUp()
        self.write_sample(plist=BEFORE + padding)
        subprocess.run(["sh", "-ec", commands, QUORVEL], cwd=self.directory, check=True)

    def trace(self, commands):
        """Returns the trace of the file-related system calls of a run."""
        self.prepare(commands)
        return self.run_program("strace", "-e", "trace=%file,%desc", QUORVEL)[1]

    def system_calls(self, commands, first="Quorvel.cfg"):
        """Returns these calls, from the first one with this text, as (name, nth call of that name)."""
        trace = self.trace(commands)
        names = [line.partition("(")[0] for line in trace.splitlines() if "(" in line]
        earlier_calls = trace[:trace.index(first)].count("\n")
        numbered = [(name, names[:index].count(name) + 1) for index, name in enumerate(names)]
        return numbered[earlier_calls:]
