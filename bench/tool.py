#!/usr/bin/env python3
"""Times the tool as a process and compares it with other programs; prints rows for report.py.

Takes the build directory of the benchmarks."""

import os
import plistlib
import shutil
import statistics
import subprocess
import sys
import tempfile

BUILD = os.path.abspath(sys.argv[1])
PROGRAMS = ('Quorvel', 'bench/bench_read_write', 'bench/bench_time_command')
DRIVER_PLIST = '/etc/libccid_Info.plist'
PAIRS = 101

VALUES = {'ifdVendorID': '0x0100', 'ifdProductID': '0x0200', 'ifdFriendlyName': 'Example Reader'}

UNITS = ('ns', 'KiB', 'page faults')  # of the figures of a run


def row(table, case, baseline, unit, ours, theirs, limit):
    print(table, case, baseline, unit, ours, theirs, limit, sep='\t', flush=True)


class Job:
    """A property list, and the commands that insert some values into it.

    The directory has copies of the programs: a freshly linked file causes other page faults."""

    def __init__(self, directory, document, values):
        self.tool, self.read_write, self.time_command = (
            os.path.join(directory, os.path.basename(program)) for program in PROGRAMS)
        self.plist = os.path.join(directory, 'Info.plist')
        self.config = os.path.join(directory, 'reader.cfg')
        self.copy = os.path.join(directory, 'copy')
        self.document = document
        self.values = values
        lines = [f'FileName = {self.plist}', 'Tree = ' + ':'.join(values)]
        lines += [f'{name} = {value}' for name, value in values.items()]
        with open(self.config, 'w', encoding='ascii') as config:
            config.write('\n'.join(lines) + '\n')

    def quorvel(self):
        return [self.tool, 'update', '-config=' + self.config]

    def nothing(self):
        return [self.read_write]

    def read(self):
        return [self.read_write, self.plist]

    def write(self):
        return [self.read_write, self.plist, 'write']

    def cp(self):
        return ['cp', self.plist, self.copy]

    def perl(self):
        values = ','.join(f"'{name}','{value}'" for name, value in self.values.items())
        step = (f'BEGIN {{ %v = ({values}); $n = join "|", keys %v }} '
                's{<key>($n)</key>.*?\\K<string>}{<string>$v{$1}</string>\\n\\t\\t<string>}sg')
        return ['perl', '-0pi', '-e', step, self.plist]

    def sed(self):
        steps = [f'/<key>{name}<.key>/,/<string>/ s|<string>|<string>{value}</string>\\n\\t\\t&|'
                 for name, value in self.values.items()]
        return ['sed', '-i', ';'.join(steps), self.plist]

    def xmlstarlet(self):
        command = ['xmlstarlet', 'ed', '-P', '-L']
        for name, value in self.values.items():
            command += ['-i', f"//key[.='{name}']/following-sibling::array[1]/string[1]",
                        '-t', 'elem', '-n', 'string', '-v', value]
        return [*command, self.plist]

    def plistlib(self):
        program = f'''import plistlib
with open({self.plist!r}, 'rb') as file: plist = plistlib.load(file)
for name, value in {self.values!r}.items(): plist[name].insert(0, value)
with open({self.plist!r}, 'wb') as file: plistlib.dump(plist, file, sort_keys=False)'''
        return ['/usr/bin/python3', '-c', program]

    def run(self, command):
        """Returns the figures of the command, run on the original property list."""
        with open(self.plist, 'wb') as file:
            file.write(self.document)
        if os.path.exists(self.copy):
            os.remove(self.copy)
        output = subprocess.run([self.time_command, *command], check=True, capture_output=True,
                                text=True).stdout
        return [int(figure) for figure in output.split()]

    def result(self, command):
        """Returns the bytes of the property list after the command."""
        self.run(command)
        with open(self.plist, 'rb') as file:
            return file.read()

    def compare(self, tables, case, baseline, command, limit, pairs):
        """Runs the tool and the command alternately and prints the medians: of the times, and of
        memory and page faults if there are tables for them. Returns those of the tool."""
        runs = zip(*((self.run(self.quorvel()), self.run(command)) for _ in range(pairs)))
        medians = [[statistics.median(figure) for figure in zip(*figures)] for figures in runs]
        for table, unit, ours, theirs in zip(tables, UNITS, *medians):
            row(table, case, baseline, unit, ours, theirs, limit if unit == 'ns' else 0)
        return medians[0]


def require(condition, message):
    if not condition:
        sys.exit(f'{sys.argv[0]}: {message}')


def check_results(job):
    """Checks that the programs do what they are timed for; returns the patched property list."""
    patched = job.result(job.quorvel())
    for name, command in (('plistlib', job.plistlib()), ('xmlstarlet', job.xmlstarlet())):
        require(plistlib.loads(job.result(command)) == plistlib.loads(patched),
                f'the property list of {name} differs')
    for name, command in (('perl', job.perl()), ('sed', job.sed())):
        require(job.result(command) == patched, f'the property list of {name} differs')
    job.run(job.cp())
    with open(job.copy, 'rb') as copy:
        require(copy.read() == job.document, 'the copy of cp differs')
    job.run(job.nothing())  # restores the property list
    os.utime(job.plist, ns=(0, 0))
    subprocess.run(job.write(), check=True)
    with open(job.plist, 'rb') as file:
        require(file.read() == job.document and os.stat(job.plist).st_mtime_ns != 0,
                'read_write did not write the property list')
    return patched


def compare_main_job(directory, tables, pairs, has_limits):
    with open(DRIVER_PLIST, 'rb') as file:
        job = Job(directory, file.read(), VALUES)
    present = Job(directory, check_results(job), VALUES)
    require(present.result(present.quorvel()) == present.document,
            'the second run changed the property list')
    for state, case, baseline, command, limit in (
            (job, 'three insertions', 'C, does nothing', job.nothing(), 0),
            (job, 'three insertions', 'C, reads and writes', job.write(), 1.25),
            (job, 'three insertions', '`cp`', job.cp(), 0.8),
            (job, 'three insertions', '`perl -0pi`', job.perl(), 0.6),
            (job, 'three insertions', '`sed -i`', job.sed(), 0),
            (job, 'three insertions', '`xmlstarlet ed`', job.xmlstarlet(), 0.35),
            (job, 'three insertions', 'Python, plistlib', job.plistlib(), 0.06),
            (present, 'all present', 'C, reads', job.read(), 1.15)):
        state.compare(tables, case, baseline, command, limit if has_limits else 0, pairs)


def measure_memory(directory, table):
    with open(DRIVER_PLIST, 'rb') as file:
        job = Job(directory, file.read(), VALUES)
    row(table, 'three insertions', 'at most 2 MiB', 'KiB', job.run(job.quorvel())[1], 2048, 1)
    with open(job.config, 'a', encoding='ascii') as config:
        config.write('\n' * 10_000_000)
    row(table, 'three insertions, 10 MB of blank lines in the configuration', 'the configuration',
        'KiB', job.run(job.quorvel())[1], os.path.getsize(job.config) // 1024, 0)


def plist_of_arrays(names, size):
    """Returns about size bytes with an array of the same length for each name."""
    entry = '\t\t<string>Some Maker Smart Card Reader %05d</string>\n'
    array = '\t<key>%s</key>\n\t<array>\n%s\t</array>\n'
    length = (size // len(names) - len(array % (names[0], ''))) // len(entry % 0)
    entries = ''.join(entry % number for number in range(length))
    arrays = ''.join(array % (name, entries) for name in names)
    return f'<plist version="1.0">\n<dict>\n{arrays}</dict>\n</plist>\n'.encode()


def compare_growth(directory, times, memory):
    for size, kilobytes, count, pairs, limit, perl_limit in (
            ('58 KB', 58, 300, PAIRS, 0, 0), ('1 MB', 1000, 3, 31, 0, 1),
            ('10 MB', 10_000, 3, 31, 1.5, 1), ('100 MB', 100_000, 3, 7, 0, 1),
            ('10 MB', 10_000, 30, 15, 0, 0), ('10 MB', 10_000, 300, 7, 0, 0)):
        names = [f'list{number:03d}' for number in range(count)]
        values = {name: 'A value of ' + name[-3:] for name in names}
        job = Job(directory, plist_of_arrays(names, kilobytes * 1000), values)
        require(job.result(job.quorvel()) == job.result(job.perl()),
                'the property list of perl differs')
        case = f'{size}, {count} names'
        job.compare((times, memory), case, 'C, reads and writes', job.write(), limit, pairs)
        _, peak, _ = job.compare((times, memory), case, '`perl -0pi`', job.perl(), perl_limit,
                                 pairs)
        row(memory, case, 'twice the property list and 2 MiB', 'KiB', peak,
            2 * len(job.document) // 1024 + 2048, 1)


def copy_programs(directory):
    for program in PROGRAMS:
        shutil.copy(os.path.join(BUILD, program), directory)


def main():
    require(os.path.exists(DRIVER_PLIST), f'{DRIVER_PLIST} is missing')
    with tempfile.TemporaryDirectory(dir='/dev/shm') as directory:
        copy_programs(directory)
        memory = 'The main job, peak memory'
        compare_main_job(directory, ('The main job, files in memory', memory,
                                     'The main job, page faults'), PAIRS, True)
        measure_memory(directory, memory)
        compare_growth(directory, 'Larger property lists', 'Larger property lists, peak memory')
    with tempfile.TemporaryDirectory(dir=BUILD) as directory:
        copy_programs(directory)
        compare_main_job(directory, ('The main job, files in the build directory',), 51, False)


main()
