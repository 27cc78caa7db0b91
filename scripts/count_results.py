"""Counts the test cases in a result file of ctest and prints: passed, failed, the names of those skipped.

An entry of ctest may be one test case or a whole GoogleTest program; a program counts as its cases. What failed is shown
on standard error, without the cases that passed.
"""

import re
import sys
import xml.etree.ElementTree

PASSED = re.compile(r"^\[  PASSED  \] (\d+) tests?\.", re.MULTILINE)
FAILED = re.compile(r"^\[  FAILED  \] (\d+) tests?, listed below:", re.MULTILINE)
SKIPPED = re.compile(r"^\[  SKIPPED \] (\S+\.\S+)\s*$", re.MULTILINE)
PASSED_CASE = re.compile(r"^\[ RUN      \] (\S+)\n\[       OK \] \1 .*\n", re.MULTILINE)
FRAME = re.compile(r"^(\[-{10}\].*)?\n", re.MULTILINE)


def show(entry):
    """What the entry said, without the cases that passed."""
    output = (entry.findtext("system-out") or "").replace("\r", "")
    output = FRAME.sub("", PASSED_CASE.sub("", output))
    if "[ RUN      ] " in output and not PASSED.search(output):
        output = f"{output.rstrip()}\n(the program ended here: it crashed or took too long)\n"
    print(f"--- {entry.get('name')}\n{output}", file=sys.stderr)


def count(entry):
    """The numbers of cases passed and failed in one entry, and the names of those skipped."""
    output = entry.findtext("system-out") or ""
    good = entry.get("status") == "run"
    if entry.get("status") in ("notrun", "disabled"):
        return 0, 0, [entry.get("name")]
    passed, failed = PASSED.search(output), FAILED.search(output)
    if not passed:
        return int(good), int(not good), []
    # A program that goes wrong after its last case has failed all the same.
    return (
        int(passed.group(1)),
        max(int(failed.group(1)) if failed else 0, int(not good)),
        sorted(set(SKIPPED.findall(output))),
    )


def main():
    counts = []
    for entry in xml.etree.ElementTree.parse(sys.argv[1]).getroot().iter("testcase"):
        counts.append(count(entry))
        if counts[-1][1] > 0:
            show(entry)
    skipped = [name for _, _, names in counts for name in names]
    print(sum(c[0] for c in counts), sum(c[1] for c in counts), *skipped)


main()
