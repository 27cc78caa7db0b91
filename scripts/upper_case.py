#!/usr/bin/env python3
"""Writes the table of upper-case letters, src/automation/upper_case.inc, from the data of Debian's unicode-data.

    scripts/upper_case.py

The table has Unicode's simple mappings within the basic plane. It is checked in; only a new version of Unicode asks for
another run.
"""
import pathlib
import re

DATA = pathlib.Path("/usr/share/unicode")
TABLE = pathlib.Path(__file__).parent.parent / "src/automation/upper_case.inc"


def mappings():
    """Pairs of a letter and its upper-case one, in order."""
    for line in (DATA / "UnicodeData.txt").read_text(encoding="ascii").splitlines():
        fields = line.split(";")
        if fields[12] and int(fields[0], 16) <= 0xFFFF:
            yield int(fields[0], 16), int(fields[12], 16)


def runs():
    """[first, last, step, offset]: letters at equal steps of 1 or 2 whose mapping adds the same number."""
    run = None
    for letter, upper in mappings():
        offset = upper - letter
        step = letter - run[1] if run else 0
        if run and offset == run[3] and step in ((1, 2) if run[0] == run[1] else (run[2],)):
            run[1:3] = letter, step
            continue
        if run:
            yield run
        run = [letter, letter, 1, offset]
    yield run


version = re.search(r"-(\d+\.\d+\.\d+)\.txt", (DATA / "CaseFolding.txt").read_text(encoding="utf-8")).group(1)
rows = [f"{{0x{first:04X}, 0x{last:04X}, {step}, {offset}}}" for first, last, step, offset in runs()]
lines = [", ".join(rows[i : i + 4]) + ",\n" for i in range(0, len(rows), 4)]
TABLE.write_text(
    f"// Unicode {version}; made by scripts/upper_case.py. First and last letter, step, and what the upper-case one adds.\n"
    + "".join(lines),
    encoding="ascii",
)
