#!/usr/bin/env python3
"""The tool as a whole process beside other ways to the same result; prints rows for report.py.

Takes the folder of the build with the benchmarks."""

import os
import plistlib
import statistics
import subprocess
import sys
import tempfile

BUILD = os.path.abspath(sys.argv[1])
TOOL = os.path.join(BUILD, 'Quorvel')
RUN = os.path.join(BUILD, 'bench', 'bench_run')
MINIMAL = os.path.join(BUILD, 'bench', 'bench_minimal')
DRIVER_LIST = '/etc/libccid_Info.plist'
PAIRS = 101

VALUES = {'ifdVendorID': '0x0100', 'ifdProductID': '0x0200', 'ifdFriendlyName': 'Example Reader'}


def row(table, case, rival, unit, ours, theirs, goal):
    print(table, case, rival, unit, ours, theirs, goal, sep='\t', flush=True)


class Job:
    """A list in a folder, and the commands that patch it with some values."""

    def __init__(self, folder, document, values):
        self.list = os.path.join(folder, 'Info.plist')
        self.config = os.path.join(folder, 'reader.cfg')
        self.copy = os.path.join(folder, 'copy')
        self.document = document
        self.values = values
        lines = [f'FileName = {self.list}', 'Tree = ' + ':'.join(values)]
        lines += [f'{name} = {value}' for name, value in values.items()]
        with open(self.config, 'w', encoding='ascii') as config:
            config.write('\n'.join(lines) + '\n')

    def quorvel(self):
        return [TOOL, 'update', '-config=' + self.config]

    def minimal(self, *write):
        return [MINIMAL, self.list, *write]

    def cp(self):
        return ['cp', self.list, self.copy]

    def perl(self):
        values = ','.join(f"'{name}','{value}'" for name, value in self.values.items())
        step = (f'BEGIN {{ %v = ({values}); $n = join "|", keys %v }} '
                's{<key>($n)</key>.*?\\K<string>}{<string>$v{$1}</string>\\n\\t\\t<string>}sg')
        return ['perl', '-0pi', '-e', step, self.list]

    def sed(self):
        steps = [f'/<key>{name}<.key>/,/<string>/ s|<string>|<string>{value}</string>\\n\\t\\t&|'
                 for name, value in self.values.items()]
        return ['sed', '-i', ';'.join(steps), self.list]

    def xmlstarlet(self):
        command = ['xmlstarlet', 'ed', '-P', '-L']
        for name, value in self.values.items():
            command += ['-i', f"//key[.='{name}']/following-sibling::array[1]/string[1]",
                        '-t', 'elem', '-n', 'string', '-v', value]
        return [*command, self.list]

    def plistlib(self):
        program = f'''import plistlib
with open({self.list!r}, 'rb') as file: plist = plistlib.load(file)
for name, value in {self.values!r}.items(): plist[name].insert(0, value)
with open({self.list!r}, 'wb') as file: plistlib.dump(plist, file, sort_keys=False)'''
        return ['/usr/bin/python3', '-c', program]

    def run(self, command):
        """Nanoseconds and KiB of the command, on the list as it was."""
        with open(self.list, 'wb') as file:
            file.write(self.document)
        if os.path.exists(self.copy):
            os.remove(self.copy)
        answer = subprocess.run([RUN, *command], check=True, capture_output=True, text=True).stdout
        return [int(figure) for figure in answer.split()]

    def result(self, command):
        """The bytes of the list after the command."""
        self.run(command)
        with open(self.list, 'rb') as file:
            return file.read()

    def compare(self, ours, theirs, pairs=PAIRS):
        """The medians of two commands in turn."""
        times = [(self.run(ours)[0], self.run(theirs)[0]) for _ in range(pairs)]
        return [statistics.median(column) for column in zip(*times)]


def require(condition, message):
    if not condition:
        sys.exit(f'{sys.argv[0]}: {message}')


def compare_results(job):
    """Holds that the ways to be timed do what they are timed for; returns the patched list."""
    patched = job.result(job.quorvel())
    for name, command in (('plistlib', job.plistlib()), ('xmlstarlet', job.xmlstarlet())):
        require(plistlib.loads(job.result(command)) == plistlib.loads(patched),
                f'{name} made another list')
    for name, command in (('perl', job.perl()), ('sed', job.sed())):
        require(job.result(command) == patched, f'{name} made another list')
    job.run(job.cp())
    with open(job.copy, 'rb') as copy:
        require(copy.read() == job.document, 'cp made another copy')
    job.run(job.minimal())
    os.utime(job.list, ns=(0, 0))
    subprocess.run(job.minimal('write'), check=True)
    with open(job.list, 'rb') as file:
        require(file.read() == job.document and os.stat(job.list).st_mtime_ns != 0,
                'the minimal program did not write the list')
    return patched


def compare_main_job(folder, where, goals):
    with open(DRIVER_LIST, 'rb') as file:
        job = Job(folder, file.read(), VALUES)
    patched = compare_results(job)
    table = 'The main job, files in ' + where
    rivals = (('a minimal C program, static', job.minimal('write')), ('`cp`', job.cp()),
              ('`perl -0pi`', job.perl()), ('`sed -i`', job.sed()),
              ('`xmlstarlet ed`', job.xmlstarlet()), ('Python, plistlib', job.plistlib()))
    for (rival, command), goal in zip(rivals, goals):
        row(table, 'three insertions', rival, 'ns', *job.compare(job.quorvel(), command), goal)

    present = Job(folder, patched, VALUES)
    require(present.result(present.quorvel()) == patched, 'the second run changed the list')
    row(table, 'all present', 'a minimal C reader, static', 'ns',
        *present.compare(present.quorvel(), present.minimal()), goals[-1])
    memory = statistics.median(job.run(job.quorvel())[1] for _ in range(PAIRS))
    row(table, 'peak memory', 'at most 2 MiB', 'KiB', memory, 2048, 1)


def list_of_arrays(names, size):
    """A list with an array for each name, all as long as it takes to reach the size."""
    entry = '\t\t<string>Some Maker Smart Card Reader %05d</string>\n'
    length = size // len(names) // len(entry % 0)
    entries = ''.join(entry % number for number in range(length))
    arrays = ''.join(f'\t<key>{name}</key>\n\t<array>\n{entries}\t</array>\n' for name in names)
    return f'<plist version="1.0">\n<dict>\n{arrays}</dict>\n</plist>\n'.encode()


def compare_growth(folder):
    table = 'Larger lists, files in memory'
    for megabytes, count, pairs, goal in ((1, 3, 31, 0), (10, 3, 31, 1.5), (100, 3, 7, 0),
                                          (10, 30, 15, 0), (10, 300, 7, 0)):
        names = [f'list{number:03d}' for number in range(count)]
        values = {name: 'A value of ' + name[-3:] for name in names}
        job = Job(folder, list_of_arrays(names, megabytes * 1_000_000), values)
        require(job.result(job.quorvel()) == job.result(job.perl()), 'perl made another list')
        case = f'{megabytes} MB, {count} names'
        for rival, command, limit in (('a minimal C program, static', job.minimal('write'), goal),
                                      ('`perl -0pi`', job.perl(), 1 if count == 3 else 0)):
            row(table, case, rival, 'ns', *job.compare(job.quorvel(), command, pairs), limit)
        memory = job.run(job.quorvel())[1]
        row(table, case, 'twice the list and 2 MiB', 'KiB', memory,
            2 * len(job.document) // 1024 + 2048, 1)


def main():
    require(os.path.exists(DRIVER_LIST), f'{DRIVER_LIST} is missing')
    with tempfile.TemporaryDirectory(dir='/dev/shm') as folder:
        compare_main_job(folder, 'memory', (1.25, 0.8, 0.6, 0, 0.35, 0.06, 1.15))
        compare_growth(folder)
    with tempfile.TemporaryDirectory(dir=BUILD) as folder:
        compare_main_job(folder, 'the build folder', (0,) * 7)


main()
