#!/usr/bin/env python3
"""Prints the rows of the benchmarks as tables, and draws the main job.

Takes the file of rows and the picture to draw. A row holds, with tabs between: the table, the case,
what it is compared with, the unit, the two figures and the highest ratio that is the goal, or 0."""

import csv
import html
import math
import sys
from itertools import groupby

MAIN_JOB = 'The main job, files in memory'


def quantity(value, unit):
    """Three digits with a fitting unit."""
    scales = {'ns': (('ns', 1), ('µs', 1e3), ('ms', 1e6), ('s', 1e9)),
              'KiB': (('KiB', 1), ('MiB', 1024)), 'bytes': (('bytes', 1),)}[unit]
    name, size = [scale for scale in scales if value >= scale[1]][-1]
    digits = max(0, 2 - int(math.log10(value / size)))
    return f'{value / size:.{digits}f} {name}'


def print_table(title, rows):
    print(f'### {title}\n')
    print('| case | Quorvel | beside | its figure | ratio | goal |')
    print('|---|---:|---|---:|---:|---:|')
    for case, rival, unit, ours, theirs, goal in rows:
        ratio = ours / theirs
        bound = f'{goal:g}' + (' (missed)' if ratio > goal else '') if goal else ''
        print(f'| {case} | {quantity(ours, unit)} | {rival} | {quantity(theirs, unit)} '
              f'| {ratio:.3g} | {bound} |')
    print()


def draw(rows):
    """Dots on an axis of powers of ten, as the slowest takes a hundred times the fastest. Our time is
    that of the first row, beside the fastest."""
    times = {rival.replace('`', ''): theirs for case, rival, _, _, theirs, _ in rows
             if case == 'three insertions'}
    times['Quorvel'] = rows[0][3]
    dots = sorted(times.items(), key=lambda dot: dot[1])
    left, right, top, line = 230, 620, 60, 28
    low, high = 1e5, 10 ** math.ceil(math.log10(dots[-1][1]))
    bottom = top + line * len(dots)

    def x(time):
        return left + (right - left) * math.log(time / low) / math.log(high / low)

    shapes = [f'<rect width="720" height="{bottom + 40}" fill="#fff"/>',
              '<text x="20" y="30" font-size="16">Three insertions into a driver\'s list of 58 KB: '
              'time of the whole process</text>']
    for power in range(round(math.log10(low)), round(math.log10(high)) + 1):
        at = x(10 ** power)
        shapes.append(f'<line x1="{at:.1f}" y1="{top - 10}" x2="{at:.1f}" y2="{bottom}" '
                      'stroke="#ccc"/>')
        shapes.append(f'<text x="{at:.1f}" y="{bottom + 20}" text-anchor="middle">'
                      f'{10 ** (power - 6):g} ms</text>')
    for number, (name, time) in enumerate(dots):
        y = top + line * number + line / 2
        style = ' font-weight="bold"' if name == 'Quorvel' else ''
        fill = '#c0392b' if name == 'Quorvel' else '#34495e'
        shapes.append(f'<text x="{left - 15}" y="{y + 5:.1f}" text-anchor="end"{style}>'
                      f'{html.escape(name)}</text>')
        shapes.append(f'<circle cx="{x(time):.1f}" cy="{y:.1f}" r="6" fill="{fill}"/>')
        shapes.append(f'<text x="{x(time) + 12:.1f}" y="{y + 5:.1f}"{style}>'
                      f'{quantity(time, "ns")}</text>')
    return (f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 720 {bottom + 40}" '
            f'font-family="sans-serif" font-size="14">\n' + '\n'.join(shapes) + '\n</svg>\n')


def main():
    with open(sys.argv[1], encoding='utf-8') as file:
        rows = [(*row[:4], *map(float, row[4:])) for row in csv.reader(file, delimiter='\t')]
    for title, table in groupby(rows, key=lambda row: row[0]):
        print_table(title, [row[1:] for row in table])
    with open(sys.argv[2], 'w', encoding='utf-8') as picture:
        picture.write(draw([row[1:] for row in rows if row[0] == MAIN_JOB]))


main()
