#!/usr/bin/env python3
"""Sums up a coverage trace (lcov format, from standard input): covered-lines.py LEAST_PERCENT [files].

A line that several binaries or instantiations have is run if it ran in one of them.
"""
import collections
import os
import sys


def read_trace(trace):
    """The runs of each line, by file."""
    files = collections.defaultdict(dict)
    lines = {}
    for entry in trace:
        key, _, value = entry.rstrip().partition(":")
        if key == "SF":
            lines = files[os.path.relpath(value)]
        elif key == "DA":
            line, runs = value.split(",")[:2]
            lines[int(line)] = max(lines.get(int(line), 0), int(runs))
    return files


def ranges(numbers):
    """[1, 2, 3, 7] as "1-3 7"."""
    found = []
    for number in numbers:
        if found and found[-1][1] == number - 1:
            found[-1][1] = number
        else:
            found.append([number, number])
    return " ".join(str(first) if first == last else f"{first}-{last}" for first, last in found)


def main():
    least = float(sys.argv[1])
    files = read_trace(sys.stdin)
    missed = {file: sorted(line for line, runs in lines.items() if runs == 0) for file, lines in files.items()}
    if "files" in sys.argv[2:]:
        for file in sorted(missed, key=lambda file: (len(missed[file]), file)):
            print(f"{len(files[file]) - len(missed[file])} of {len(files[file])} {file} {ranges(missed[file])}".rstrip())
    count = sum(map(len, files.values()))
    if count == 0:
        sys.exit("coverage: no lines were counted")
    share = 100 * (count - sum(map(len, missed.values()))) / count
    print(f"coverage: {share:.2f} % of {count} lines of src/ in {len(files)} files were run by the tests")
    if share < least:
        sys.exit(f"coverage: fewer than {least:g} %")


main()
