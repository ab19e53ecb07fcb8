"""Saving while other processes change the property list and its directory."""
import fcntl
import itertools
import os
import plistlib
import signal
import subprocess
import sys
import unittest

from sample import AFTER, CONFIG, VALUES
from save import HARD_LINK, QUORVEL, SaveTest, with_strace

# A victim's file, and commands of another user, who owns the directory and the property list.
ATTACKED = """mkdir attacked victim; cp Info.plist victim; mv Info.plist attacked
sed -i s,:Info.plist,:attacked/Info.plist, Quorvel.cfg; chown -R 1234 . attacked; chown -R 0 victim"""
REDIRECT_PLIST = "mv attacked/Info.plist taken; ln -s ../victim/Info.plist attacked"
REDIRECT_DIRECTORY = "mv attacked taken; ln -s victim attacked"
REDIRECT_TEMPORARY = """for temporary in attacked/.q*; do
    [ ! -e "$temporary" ] || { mv "$temporary" stolen; ln -s ../victim/Info.plist "$temporary"; }
done"""

EDIT_BY_RENAME = "cp Info.plist new; echo edited >>new; mv new Info.plist"
EDIT_IN_PLACE = "echo edited >>Info.plist"


@unittest.skipUnless(sys.platform == "linux", "needs commands and system calls of Linux")
class SaveRaces(SaveTest):
    def interrupt(self, call, commands, **user):
        """Runs the tool, stops it after a system call, given as (name, nth call of that name), to run
        shell commands, and returns its exit status."""
        stop = "inject={}:signal=STOP:when={}".format(*call)
        # With -D the tool is a child of this process.
        with subprocess.Popen(["strace", "-D", "-o", os.devnull, "-e", stop, QUORVEL],
                              cwd=self.directory, stdout=subprocess.DEVNULL) as tool:
            self.assertTrue(os.WIFSTOPPED(os.waitpid(tool.pid, os.WUNTRACED)[1]))
            try:
                subprocess.run(["sh", "-ec", commands], cwd=self.directory, check=True, **user)
            finally:
                tool.send_signal(signal.SIGCONT)
            return tool.wait(timeout=60)

    @with_strace
    @unittest.skipIf(os.geteuid() != 0, "needs root")
    def test_other_users_cannot_redirect_a_save(self):
        for commands in REDIRECT_PLIST, REDIRECT_DIRECTORY, REDIRECT_TEMPORARY:
            for call in self.system_calls(ATTACKED, first="O_PATH"):
                with self.subTest(commands, interrupted_after=call):
                    self.prepare(ATTACKED)
                    victim = self.directory / "victim/Info.plist"
                    before = victim.read_text(), victim.stat()
                    status = self.interrupt(call, commands, user=1234, group=1234, extra_groups=[])
                    self.assertEqual((victim.read_text(), victim.stat()), before)
                    self.assertEqual(os.listdir(victim.parent), [victim.name])
                    plists = map(self.directory.joinpath, ["attacked/Info.plist", "taken", "taken/Info.plist"])
                    self.assertTrue(status or AFTER in [path.read_text() for path in plists if path.is_file()])

    @with_strace
    def test_keeps_the_changes_of_other_programs(self):
        for (prepared, last_call), commands in itertools.product(
                [("", ("fsync", 1)), (HARD_LINK, ("pread64", 2))], [EDIT_BY_RENAME, EDIT_IN_PLACE]):
            calls = self.system_calls(prepared, first="O_PATH")
            for call in calls[:calls.index(last_call) + 1]:
                with self.subTest(commands, prepared_by=prepared, interrupted_after=call):
                    self.prepare(prepared)
                    self.assertEqual(self.interrupt(call, commands), 0)
                    self.assertEqual(self.read_plist(), AFTER + "edited\n")

    def update_at_once(self, values):
        """Starts an update for each value and returns their exit statuses."""
        start, release = os.pipe()
        updates = []
        for value in values:
            lines = ["FileName=Info.plist", "Tree=" + ":".join(VALUES), *(f"{key}={value}" for key in VALUES)]
            (self.directory / value).write_text("\n".join(lines))
            updates.append(subprocess.Popen(
                ["sh", "-c", 'read line; exec "$0" update -config="$1"', QUORVEL, value], cwd=self.directory, stdin=start))
        os.close(start)
        os.close(release)
        return [update.wait(timeout=60) for update in updates]

    def test_concurrent_updates_are_all_made(self):
        for prepared, count in itertools.product(["", HARD_LINK], [2, 8]):
            with self.subTest(prepared_by=prepared, count=count):
                self.prepare(prepared)
                values = [f"{number}" for number in range(25 * count)]
                for first in range(0, len(values), count):
                    self.assertEqual(self.update_at_once(values[first:first + count]), count * [0])
                arrays = [array[:-2] for array in plistlib.loads(self.read_plist().encode()).values()]
                self.assertEqual(arrays[1:], arrays[:1] * 2)
                self.assertEqual(sorted(arrays[0]), sorted(values))

    def test_does_not_wait_forever_for_a_lock(self):
        self.write_sample()
        with open(self.directory / "Info.plist") as plist:
            fcntl.flock(plist, fcntl.LOCK_EX)
            self.assertEqual(self.run_program(QUORVEL), ("", "", 0))
        self.assertEqual(self.read_plist(), AFTER)
