"""Saving under injected faults: kills, failing system calls, exhausted resources."""
import itertools
import os
import resource
import sys
import unittest

from sample import AFTER, BEFORE, CONFIG
from save import HARD_LINK, QUORVEL, SANITIZED, SaveTest, with_strace

WRITE_ERROR = "Exception: 0x1d ERROR_WRITE.\n"

# Shell commands that prepare the property list.
ATTRIBUTES = "setfattr -n user.note -v kept Info.plist; setfacl -m u:1234:r Info.plist"
SYMBOLIC_LINK = "mv Info.plist real; ln -s real Info.plist"


def limited(limit, value):
    return {"preexec_fn": lambda: resource.setrlimit(limit, (value, value))}


@unittest.skipUnless(sys.platform == "linux", "needs commands and system calls of Linux")
class SaveFaults(SaveTest):
    def prepare(self, commands, padding=""):
        """Prepares a new directory with shell commands; returns its metadata."""
        super().prepare(commands, padding)
        return self.metadata()

    def metadata(self):
        """Returns the metadata of every file, except sizes and times, as lines."""
        return self.run_program("sh", "-c", "stat -c '%A %h %u %g %N' * .q*; getfattr -hdm - *")[0].splitlines()

    def update(self, commands="", padding="", command=(QUORVEL,), **options):
        """Prepares a directory and runs command; returns its output and status. The metadata must not
        change, and the property list only with status 0."""
        metadata = self.prepare(commands, padding)
        output, _, status = self.run_program(*command, **options)
        with self.subTest(prepared_by=commands, command=command):
            self.assertEqual(self.read_plist(), (BEFORE if status else AFTER) + padding)
            self.assertEqual(self.metadata(), metadata)
        return output, status

    @with_strace
    def test_syncs_what_it_writes(self):
        self.assertRegex(self.trace(""), r"(?s)write64\(.*fsync\(.*renameat\(.*fsync\(")
        unsynced = ("strace", "-e", "inject=fsync:error=EIO:when=1", QUORVEL)
        self.assertEqual(self.update(command=unsynced), (WRITE_ERROR, 1))
        first_difference = len(os.path.commonprefix([BEFORE, AFTER]))
        self.assertRegex(self.trace(HARD_LINK), rf"(?s)pwrite64\([^\n]*, {first_difference}\) = .*fsync\(")

    @with_strace
    def test_survives_a_kill_at_every_system_call(self):
        for commands in ATTRIBUTES, SYMBOLIC_LINK, HARD_LINK:
            for name, number in self.system_calls(commands):
                with self.subTest(prepared_by=commands, killed_at=(name, number)):
                    metadata = self.prepare(commands)
                    kill = f"inject={name}:signal=KILL:when={number}"
                    self.assertEqual(self.run_program("strace", "-e", kill, QUORVEL)[2], -9)
                    self.assertIn(self.read_plist(), (BEFORE, AFTER))
                    temporary = [line for line in self.metadata() if ".quorvel-" in line]
                    self.assertLessEqual(len(temporary), 1)
                    self.assertEqual([line for line in self.metadata() if line not in temporary], metadata)
                    self.assertEqual(self.run_program(QUORVEL), ("", "", 0))
                    self.assertEqual(self.read_plist(), AFTER)

    @with_strace
    def test_survives_a_failure_of_every_system_call(self):
        for commands in ATTRIBUTES, HARD_LINK:
            # A suppressed close would keep its lock, which a real one never does.
            for name, number in (call for call in self.system_calls(commands) if call[0] != "close"):
                for error, later_calls in itertools.product(("EACCES", "EINTR", "EIO", "ENOSPC"), ("", "+")):
                    fault = f"inject={name}:error={error}:when={number}{later_calls}"
                    self.update(commands, command=("strace", "-e", fault, QUORVEL))

    @unittest.skipIf(os.geteuid() != 0, "needs root")
    def test_replaces_or_writes_in_place(self):
        own, foreign = "chown 65534:65534 Info.plist", "chown 1234:4321 Info.plist"
        long_path = "p=$(printf %0200d/ 0 0 0 0 0 0); mkdir -p $p; mv Info.plist $p; ln -s $p/Info.plist ."
        for user, commands, expected in [
            (0, f"{foreign}; chmod 640 *; {SYMBOLIC_LINK}", "replaced"),
            (0, f"chmod 600 *; {ATTRIBUTES}", "replaced"),
            (0, f"setfacl -dm u:5:rw .; chown 5:6 .; chmod 2775 .; chmod 604 *; {foreign}", "replaced"),
            (0, f"chown 5:6 .; chmod 1777 .; {foreign}; chmod 6640 *", "replaced"),
            (0, HARD_LINK, "in place"),
            (0, long_path, "replaced"),
            (65534, f"{own}; chmod 4755 *", "replaced"),
            (65534, f"{own}; chmod 333 .", "replaced"),
            (65534, f"{own}; chmod 555 .", "in place"),
            (65534, f"{foreign}; chmod 666 *", "in place"),
            (65534, f"{own}; chmod 444 Info.plist", WRITE_ERROR),
            (65534, f"{own}; chmod 0 Info.plist", "Exception: 0x6e ERROR_FILE_OPEN.\n"),
        ]:
            commands = f'chmod 777 .; {commands}; cp "$0" .; stat -Lc %i Info.plist >inode'
            output, status = self.update(commands, command=("./Quorvel",), user=user, group=user, extra_groups=[])
            inode = (self.directory / "Info.plist").stat().st_ino
            how = "in place" if (self.directory / "inode").read_text() == f"{inode}\n" else "replaced"
            self.assertEqual(output if status else how, expected, commands)

    def test_limited_file_size(self):
        for limit, commands in itertools.product((0, 300, len(AFTER) - 1, len(AFTER)), ("", HARD_LINK)):
            expected = ("", 0) if limit == len(AFTER) else (WRITE_ERROR, 1)
            self.assertEqual(self.update(commands, **limited(resource.RLIMIT_FSIZE, limit)), expected, limit)

    @unittest.skipIf(SANITIZED, "a sanitizer needs more address space")
    def test_limited_memory(self):
        minimum = next(size for size in range(1 << 20, 1 << 24, 1 << 14)
                       if self.run_program(QUORVEL, "-h", **limited(resource.RLIMIT_AS, size))[2] == 0)
        errors = {f"Exception{error}.\n" for error in (" occured", ": 0x8009000e ERROR_MEM", ": std::bad_alloc")}
        statuses = []
        for size in range(minimum, minimum + (10 << 20), 1 << 18):
            output, status = self.update(padding=" " * (2 << 20), **limited(resource.RLIMIT_AS, size))
            self.assertIn(output, errors if status else {""}, size)
            statuses.append(status)
        self.assertEqual((statuses[0], statuses[-1]), (1, 0))

    def test_closed_standard_streams(self):
        # The long path fills the output buffer, so that writing to the closed pipe fails before the property list is saved.
        long_path = "./" * 2040 + "Quorvel.cfg"
        for command in '"$0" update -v <&- >&- 2>&-', f'{{ sleep 0.1; "$0" update -v -config={long_path}; }} | :':
            self.assertEqual(self.update(command=("sh", "-c", command, QUORVEL)), ("", 0), command[:40])
        for stream in range(3):  # A closed stream becomes /dev/null.
            self.write_sample(CONFIG.replace("= /missing/", f"= /dev/fd/{stream}:/missing/"))
            status = self.run_program("sh", "-c", f'"$0" {stream}<&-', QUORVEL)[2]
            self.assertEqual((status, self.read_plist()), (99, BEFORE), stream)
