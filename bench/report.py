#!/usr/bin/env python3
"""Prints the rows of the benchmarks as tables, and draws the main job.

Takes the file of rows and the picture to draw. A row is tab-separated: table, case, baseline, unit,
both figures, and the highest acceptable ratio or 0."""

import csv
import html
import math
import statistics
import sys

MAIN_JOB = 'The main job, files in memory'

# The scales of each unit, and what it measures.
UNITS = {'ns': ((('ns', 1), ('µs', 1e3), ('ms', 1e6), ('s', 1e9)), 'time'),
         'KiB': ((('KiB', 1), ('MiB', 1024), ('GiB', 1024 ** 2)), 'memory'),
         'bytes': ((('bytes', 1),), 'memory'),
         'page faults': ((('', 1),), 'page faults')}


def quantity(value, unit):
    """Formats a figure with three digits and a fitting unit."""
    scales, _ = UNITS[unit]
    name, size = [scale for scale in scales if value >= scale[1]][-1]
    digits = 0 if unit == 'page faults' else max(0, 2 - int(math.log10(value / size)))
    return f'{value / size:.{digits}f} {name}'.strip()


def print_table(title, rows):
    print(f'### {title}\n')
    _, measured = UNITS[rows[0][2]]
    print(f'| case | Quorvel | baseline | its {measured} | ratio | limit |')
    print('|---|---:|---|---:|---:|---:|')
    for case, baseline, unit, ours, theirs, limit in rows:
        ratio = ours / theirs
        verdict = f'{limit:g}' + (' (missed)' if ratio > limit else '') if limit else ''
        print(f'| {case} | {quantity(ours, unit)} | {baseline} | {quantity(theirs, unit)} '
              f'| {ratio:.3g} | {verdict} |')
    print()


def draw(rows):
    """Draws dots on a logarithmic axis, since the times differ by more than a factor of ten. Our
    time is the median over all baselines."""
    rows = [row for row in rows if row[0] == 'three insertions']
    times = {baseline.replace('`', ''): theirs for _, baseline, _, _, theirs, _ in rows}
    times['Quorvel'] = statistics.median(ours for _, _, _, ours, _, _ in rows)
    dots = sorted(times.items(), key=lambda dot: dot[1])
    left, right, top, line = 230, 620, 60, 28
    low, high = 1e5, 10 ** math.ceil(math.log10(dots[-1][1]))
    bottom = top + line * len(dots)

    def x(time):
        return left + (right - left) * math.log(time / low) / math.log(high / low)

    shapes = [f'<rect width="720" height="{bottom + 40}" fill="#fff"/>',
              '<text x="20" y="30" font-size="16">Three insertions into a driver\'s property list '
              'of 58 KB: time of the process</text>']
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
    tables = {}
    with open(sys.argv[1], encoding='utf-8') as file:
        for title, *names, ours, theirs, limit in csv.reader(file, delimiter='\t'):
            row = (*names, float(ours), float(theirs), float(limit))
            tables.setdefault(title, []).append(row)
    for title, rows in tables.items():
        print_table(title, rows)
    with open(sys.argv[2], 'w', encoding='utf-8') as picture:
        picture.write(draw(tables[MAIN_JOB]))


main()
