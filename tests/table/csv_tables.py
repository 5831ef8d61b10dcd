"""Tables of comma-separated values as Python writes and reads them.

    csv_tables.py write FOLDER   writes random tables in several dialects, N.csv, with their cells in N.json
    csv_tables.py check FOLDER   reads each N.csv and compares with the cells in N.json, and with the lines on which rows
                                 begin where it has them

Line breaks that Python leaves without quotes, because its own line ends are others, are not drawn in cells: they would
end the row. An empty line, which is no cell for Python, is one empty cell here.
"""

import csv
import itertools
import json
import pathlib
import random
import sys

PIECES = ["", "a", "bc", " ", ",", ";", "\t", '"', '""', "\n", "\r\n", "\r", "\u00e4", "\u2028", "0.5", "longer text"]
LINE_ENDS = ["\n", "\r\n", "\r"]
TABLES_PER_DIALECT = 40


def draw_rows(draw, pieces):
    return [["".join(draw.choices(pieces, k=draw.randrange(4))) for _ in range(draw.randrange(1, 6))]
            for _ in range(draw.randrange(1, 20))]


def write(folder):
    draw = random.Random(4180)
    dialects = itertools.product(",;\t", [["\n"], ["\r\n"], ["\r"], LINE_ENDS], [csv.QUOTE_MINIMAL, csv.QUOTE_ALL])
    names = itertools.count()
    for delimiter, line_ends, quoting in dialects:
        quoted = set("\r\n") if quoting == csv.QUOTE_ALL else set.intersection(*map(set, line_ends))
        pieces = [piece for piece in PIECES if set(piece) & set("\r\n") <= quoted]
        for _ in range(TABLES_PER_DIALECT):
            name = str(next(names))
            rows = draw_rows(draw, pieces)
            with open(folder / (name + ".csv"), "w", encoding="utf-8", newline="") as table:
                for row in rows:
                    end = draw.choice(line_ends)
                    csv.writer(table, delimiter=delimiter, lineterminator=end, quoting=quoting).writerow(row)
            (folder / (name + ".json")).write_text(json.dumps({"delimiter": delimiter, "rows": rows}))


def check(folder):
    differing = 0
    for expected_file in sorted(folder.glob("*.json")):
        expected = json.loads(expected_file.read_text(encoding="utf-8"))
        with open(expected_file.with_suffix(".csv"), encoding="utf-8", newline="") as table:
            reader = csv.reader(table, delimiter=expected["delimiter"], strict=True)
            found = {"delimiter": expected["delimiter"], "rows": [], "lines": [1]}
            for row in reader:
                found["rows"].append(row or [""])
                found["lines"].append(reader.line_num + 1)
            found["lines"].pop()
        different = [name for name in expected if found[name] != expected[name]]
        if different:
            differing += 1
            print(f"{expected_file.stem}: {found} instead of {expected}")
    return differing


if __name__ == "__main__":
    verb, folder = sys.argv[1], pathlib.Path(sys.argv[2])
    sys.exit(1 if (write if verb == "write" else check)(folder) else 0)
