"""Saving against all odds: the executable killed, refused and starved; what it makes of the file."""
import itertools
import os
import pathlib
import resource
import shutil
import subprocess
import sys
import unittest

from scratch import AFTER, BEFORE, CONFIG, ScratchRun

QUORVEL = os.environ["QUORVEL"]
WRITE_ERROR = "Exception: 0x1d ERROR_WRITE.\n"
ERRORS = ("EACCES", "EDQUOT", "EINTR", "EIO", "ENOSPC")
ATTRIBUTES = "setfattr -n user.note -v kept Info.plist; setfacl -m u:1234:r Info.plist"
LINK, TWO_NAMES = "mv Info.plist real; ln -s real Info.plist", "ln Info.plist second"

as_root = unittest.skipIf(os.geteuid() != 0, "only root can arrange it")
SANITIZED = b"__asan" in pathlib.Path(QUORVEL).read_bytes()
with_strace = unittest.skipIf(SANITIZED or not shutil.which("strace"),
                              "strace makes the faults; a sanitizer has calls of its own")


def under(limit, value):
    return {"preexec_fn": lambda: resource.setrlimit(limit, (value, value))}


@unittest.skipUnless(sys.platform == "linux", "the system's own commands make and show what there is")
class Save(ScratchRun):
    def prepare(self, arrange, padding=""):
        """A fresh folder with commands of the shell run in it; all there is but the list's text."""
        self.setUp()
        self.write_files(BEFORE + padding)
        subprocess.run(["sh", "-ec", arrange, QUORVEL], cwd=self.folder, check=True)
        return self.look()[1]

    def look(self):
        """The text of the list, and lines on all that there is in the folder, without sizes."""
        command = ["sh", "-c", "stat -c '%A %h %u %g %N' * .q*; getfattr -hdm - *"]
        done = subprocess.run(command, cwd=self.folder, capture_output=True, text=True)
        return (self.folder / "Info.plist").read_text(), done.stdout.splitlines()

    def update(self, arrange="", padding="", command=(QUORVEL, "update"), **options):
        """What a run prints and its status. Only the list's text changes, and with status 0 only."""
        entries = self.prepare(arrange, padding)
        output, _, status = self.run_tool(*command[1:], executable=command[0], **options)
        text = (BEFORE if status else AFTER) + padding
        self.assertEqual(self.look(), (text, entries), (output, status, arrange, command))
        return output, status

    def trace(self, arrange):
        self.prepare(arrange)
        return self.run_tool("-e", "trace=%file,%desc", QUORVEL, executable="strace")[1]

    def faults(self, arrange):
        """The calls that touch files in a whole run, each with its number among those of its name."""
        calls = self.trace(arrange)
        names = [line.partition("(")[0] for line in calls.splitlines() if "(" in line]
        first = calls[:calls.index("Quorvel.cfg")].count("\n")
        return [(name, names[:n].count(name)) for n, name in enumerate(names, 1) if n > first]

    @with_strace
    def test_written_through_and_no_more_than_differs(self):
        for arrange, calls in (("", r"write\(.*fsync\(.*rename\(.*fsync\("),
                               (TWO_NAMES, r"pwrite64\([^\n]*, 51\) = .*fsync\(")):
            self.assertRegex(self.trace(arrange), f"(?s){calls}")
        unsynced = ("strace", "-e", "inject=fsync:error=EIO:when=1", QUORVEL)
        self.assertEqual(self.update(command=unsynced), (WRITE_ERROR, 1))

    @with_strace
    def test_killed_at_every_call(self):
        for arrange in (ATTRIBUTES, LINK, TWO_NAMES):
            for name, number in self.faults(arrange):
                entries = self.prepare(arrange)
                done = self.run_tool("-e", f"inject={name}:signal=KILL:when={number}", QUORVEL,
                                     executable="strace")
                text, found = self.look()
                same = [line for line in found if ".quorvel-" not in line]
                self.assertEqual((done[2], text in (BEFORE, AFTER), len(found) - len(same) < 2, same),
                                 (-9, True, True, entries), (arrange, name, number))
                self.assertEqual((self.run_tool()[2], self.look()[0]), (0, AFTER), (name, number))

    @with_strace
    def test_refused_at_every_call(self):
        for arrange in (ATTRIBUTES, TWO_NAMES):
            for name, number in self.faults(arrange):
                for error, more in itertools.product(ERRORS, ("", "+")):
                    fault = f"inject={name}:error={error}:when={number}{more}"
                    self.update(arrange, command=("strace", "-e", fault, QUORVEL))

    @as_root
    def test_what_is_kept_written_in_place_and_refused(self):
        own, far = "chown 65534:65534 Info.plist", "chown 1234:4321 Info.plist"
        deep = "p=$(printf %0200d/ 0 0 0 0 0 0); mkdir -p $p; mv Info.plist $p; ln -s $p/Info.plist ."
        rows = [
            (0, True, f"{far}; chmod 640 *; {LINK}; mv real all; ln -s all real"), (0, False, deep),
            (0, True, "chmod 600 *; " + ATTRIBUTES), (0, True, deep.replace(" 0 0 0", " 0")),
            (0, True, f"setfacl -dm u:5:rw .; chown 5:6 .; chmod 2775 .; chmod 604 *; {far}"),
            (0, True, f"chown 5:6 .; chmod 1777 .; {far}; chmod 6640 *"), (0, False, TWO_NAMES),
            (0, True, LINK.replace("real", 255 * "n")), (65534, False, f"chmod 555 .; {own}"),
            (65534, True, f"{own}; chmod 4755 *"), (65534, False, f"{far}; chmod 666 *"),
            (65534, "0x1d ERROR_WRITE", f"{own}; chmod 444 Info.plist"),
            (65534, "0x6e ERROR_FILE_OPEN", f"{own}; chmod 0 Info.plist"),
        ]
        for user, result, arrange in rows:
            arrange = f'chmod 777 .; {arrange}; cp "$0" .; stat -Lc %i Info.plist >node'
            done = self.update(arrange, command=("./Quorvel",), user=user, group=user, extra_groups=[])
            node = int((self.folder / "node").read_text())
            same = node == (self.folder / "Info.plist").stat().st_ino
            expected = (f"Exception: {result}.\n", 1) if isinstance(result, str) else ("", 0)
            self.assertEqual((done, same), (expected, result is not True), arrange)

    @as_root
    def test_full_disks_and_mounts(self):
        script = ("mount -t tmpfs -o $1 none disk; cp Info.plist disk; cd disk; eval $2\n"
                  "$0 update -config=../Quorvel.cfg; echo $?; rm fill; ls -A; cat Info.plist")
        second_name = "ln Info.plist fill"
        rows = [
            (3000, "size=4k", ">fill", False), (3000, "size=8k", ">fill", True),
            (4096, "size=4k", second_name, False), (9000, "size=16k", ">fill", False),
            (12288, "size=12k", second_name, False), (12287, "size=16k", second_name, True),
            (3000, "nr_inodes=3", ">fill", True), (9000, "nr_inodes=3", ">fill", True),
            (9000, "size=1m", ">fill; mount --bind ../Info.plist Info.plist", True),
        ]
        (self.folder / "disk").mkdir()
        if self.run_tool("-m", "mount", "-t", "tmpfs", "none", "disk", executable="unshare")[2] != 0:
            self.skipTest("no mounts of its own")
        for size, options, arrange, succeeds in rows:
            padding = " " * (size - len(BEFORE))
            self.write_files(BEFORE + padding)
            done = self.run_tool("-m", "sh", "-c", script, QUORVEL, options, arrange, executable="unshare")
            lines = "0\nInfo.plist\n" + AFTER if succeeds else WRITE_ERROR + "1\nInfo.plist\n" + BEFORE
            self.assertEqual(done, (lines + padding, "", 0), (size, options, arrange))

    def test_limits(self):
        for padding, limits in (("", (0, 100, 390, 391)), (" " * 5000, (4096, 5390, 5391))):
            for limit, arrange in itertools.product(limits, ("", TWO_NAMES)):
                done = self.update(arrange, padding, **under(resource.RLIMIT_FSIZE, limit))
                self.assertEqual(done, ("", 0) if limit == limits[-1] else (WRITE_ERROR, 1), limit)
        if SANITIZED:
            self.skipTest("a sanitizer needs more space than there is")
        first = next(space for space in range(1 << 21, 1 << 24, 1 << 14)
                     if self.run_tool("-h", **under(resource.RLIMIT_AS, space))[2] == 0)
        for size, step in ((0, 4096), (2 << 20, 1 << 18)):
            results = [self.update("", size * " ", **under(resource.RLIMIT_AS, first + n * step))
                       for n in range(40)]
            self.assertEqual(results[-1], ("", 0))
            self.assertLessEqual(set(results), {("", 0), *((f"Exception{what}.\n", 1) for what in (
                " occured", ": 0x8009000e ERROR_MEM", ": std::bad_alloc"))})

    def test_streams_that_are_closed_or_gone(self):
        # With the long path the trace fills its buffer, and goes out, before the list is saved.
        for command in ('"$0" update -v <&- >&- 2>&-',
                        f'{{ sleep 0.1; "$0" update -v -config={"./" * 2040}Quorvel.cfg; }} | :'):
            self.assertEqual(self.update(command=("sh", "-c", command, QUORVEL))[1], 0, command)
        for stream in range(3):
            self.write_files(config=CONFIG.replace("FileName=", f"FileName=/dev/fd/{stream}:"))
            done = self.run_tool("-c", f'"$0" {stream}<&-', QUORVEL, executable="sh")
            self.assertEqual((done[2], self.look()[0]), (99, BEFORE), "an empty list from /dev/null")
