"""Checks that the library guide shows the code of examples/*.cpp and what these programs print.

usage: library_guide.py [--write] DIRECTORY, which holds the built examples; --write updates the guide.
"""
import difflib
import pathlib
import re
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
GUIDE = ROOT / "docs/libraries.md"
# The file's name, its code, the text up to its output, and its output.
EXAMPLE = re.compile(r"(`examples/(\w+)\.cpp`.*?^```cpp\n).*?(^```\n.*?^```text\n).*?(?=^```$)", re.M | re.S)


def output(program):
    with tempfile.TemporaryDirectory() as directory:
        return subprocess.run([program], cwd=directory, check=True, stdout=subprocess.PIPE, encoding="utf-8").stdout


def with_current_example(match):
    before, name, between = match.groups()
    code = (ROOT / f"examples/{name}.cpp").read_text(encoding="utf-8")
    return before + code + between + output(built_examples / f"example_{name}")


built_examples = pathlib.Path(sys.argv[-1]).resolve()
written = GUIDE.read_text(encoding="utf-8")
shown = sorted(match[2] for match in EXAMPLE.finditer(written))
if shown != sorted(source.stem for source in ROOT.glob("examples/*.cpp")):
    sys.exit(f"The guide does not show each example exactly once, but these: {' '.join(shown)}")
if {written.count("```cpp\n"), written.count("```text\n")} != {len(shown)}:
    sys.exit("The guide has code or output that belongs to no example")

expected = EXAMPLE.sub(with_current_example, written)
if "--write" in sys.argv:
    GUIDE.write_text(expected, encoding="utf-8")
else:
    sys.exit("".join(difflib.unified_diff(written.splitlines(True), expected.splitlines(True),
                                          "docs/libraries.md", "examples")) or 0)
