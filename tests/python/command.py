"""What the command answers: the other side of every comparison."""

import csv
import os
import pathlib
import subprocess
import sys
import tempfile

REPOSITORY = pathlib.Path(os.environ["NBSCORE_REPOSITORY"])
EXAMPLES = REPOSITORY / "examples"
CASES = REPOSITORY / "tests" / "cases"


def run(*arguments, status=0):
    done = subprocess.run([sys.executable, "-m", "nbscore", *map(str, arguments)], capture_output=True, text=True,
                          check=False)
    assert done.returncode == status, (done.returncode, done.stderr)
    return done.stdout


def read_table(path):
    """A table as a dict of lists of cells."""
    with open(path, encoding="utf-8-sig", newline="") as file:
        rows = list(csv.reader(file))
    return {name: [row[i] if i < len(row) else "" for row in rows[1:]] for i, name in enumerate(rows[0])}


def write_table(path, columns):
    with open(path, "w", encoding="utf-8", newline="") as file:
        writer = csv.writer(file)
        writer.writerow(columns)
        writer.writerows(zip(*columns.values()))


def score(document, rows, *options):
    """The columns that the command adds: a dict of lists of cells."""
    with tempfile.TemporaryDirectory() as folder:
        scored = pathlib.Path(folder) / "scored.csv"
        run("score", document, rows, "-o", scored, *options)
        table = read_table(scored)
    given = len(read_table(rows))
    return dict(list(table.items())[given:])
