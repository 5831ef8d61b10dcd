"""Tables of comma-separated values as Python writes and reads them.

    csv_tables.py write FOLDER   writes random tables in several dialects, N.csv, with their cells in N.json
    csv_tables.py check FOLDER   reads each N.csv and compares with the cells in N.json

A carriage return in a cell that Python leaves without quotes is not drawn: in front of a line feed it would belong to
the line end.
"""

import csv
import itertools
import json
import pathlib
import random
import sys

PIECES = ["", "a", "bc", " ", ",", ";", "\t", '"', '""', "\n", "\r\n", "\u00e4", "\u2028", "0.5", "longer text"]
TABLES_PER_DIALECT = 40


def draw_rows(draw, pieces):
    return [["".join(draw.choices(pieces, k=draw.randrange(4))) for _ in range(draw.randrange(1, 6))]
            for _ in range(draw.randrange(1, 20))]


def write(folder):
    draw = random.Random(4180)
    dialects = itertools.product(",;\t", ["\n", "\r\n"], [csv.QUOTE_MINIMAL, csv.QUOTE_ALL])
    names = itertools.count()
    for delimiter, line_end, quoting in dialects:
        quotes_returns = line_end == "\r\n" or quoting == csv.QUOTE_ALL
        pieces = PIECES + ["\r"] if quotes_returns else [piece for piece in PIECES if "\r" not in piece]
        for _ in range(TABLES_PER_DIALECT):
            name = str(next(names))
            rows = draw_rows(draw, pieces)
            with open(folder / (name + ".csv"), "w", encoding="utf-8", newline="") as table:
                csv.writer(table, delimiter=delimiter, lineterminator=line_end, quoting=quoting).writerows(rows)
            (folder / (name + ".json")).write_text(json.dumps({"delimiter": delimiter, "rows": rows}))


def check(folder):
    differing = 0
    for expected_file in sorted(folder.glob("*.json")):
        expected = json.loads(expected_file.read_text(encoding="utf-8"))
        with open(expected_file.with_suffix(".csv"), encoding="utf-8", newline="") as table:
            rows = list(csv.reader(table, delimiter=expected["delimiter"], strict=True))
        if rows != expected["rows"]:
            differing += 1
            print(f"{expected_file.stem}: {rows} instead of {expected['rows']}")
    return differing


if __name__ == "__main__":
    verb, folder = sys.argv[1], pathlib.Path(sys.argv[2])
    sys.exit(1 if (write if verb == "write" else check)(folder) else 0)
