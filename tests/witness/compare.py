#!/usr/bin/env python3
"""Scores random documents with the command and with the witness, and compares cell by cell.

    compare.py NBSCORE [--documents N] [--seed N] [--keep FOLDER]

Documents that differ are kept in the folder, with their tables.
"""
import argparse
import csv
import io
import json
import pathlib
import random
import subprocess
import sys
import tempfile
from decimal import Decimal

import manners
from elements import write
from expressions import number_of
from random_documents import draw_document
from standard_witness import Model, read_rows

# Counts give the same operations on both sides, of which only the last bits differ; functions of a library add more.
RELATIVE = {"counts": 1e-14, "densities": 1e-12}


def close(expected, actual, relative):
    if actual is None:
        return False
    return abs(float(expected) - actual) <= relative * abs(float(expected)) + 1e-307


def cell_differs(expected, cell, relative):
    """What the witness computed, and the command's text; None when they agree."""
    if expected is None:
        return cell != ""
    if isinstance(expected, (Decimal, float)):
        return not close(expected, number_of(cell), relative)
    return cell != expected


def is_tied(answer):
    """Whether the last bits decide which category is predicted."""
    if answer.best is None:
        return False
    top = sorted(answer.probabilities)[-2:]
    return len(top) == 2 and top[1] - top[0] <= top[1] * Decimal("1e-11")


def differs(kind, expected, cell, relative):
    """@param kind the feature of an output, none for the usual columns."""
    if kind == "warning":
        return cell != "" if expected is None else not any(reason in cell for reason in expected)
    if kind == "residual" and expected is not None and cell:
        # A difference of numbers of the size of 1 has their errors, however small it is.
        return abs(float(expected) - float(cell)) > relative
    return cell_differs(expected, cell, relative)


def differences(model, cases, table, usual, relative):
    names = model.usual_columns() if usual else model.columns()
    kinds = [None] * len(names) if usual else [field.get("feature") for field in model.result_fields()]
    if not table or table[0] != names:
        return [f"columns {table[:1]} instead of {names}"]
    if len(table) != len(cases) + 1:
        return [f"{len(table) - 1} rows instead of {len(cases)}"]
    found = []
    for number, (case, cells) in enumerate(zip(cases, table[1:])):
        answer, expected = model.usual_cells(case) if usual else model.cells(case)
        if is_tied(answer):
            continue
        for name, kind, wanted, cell in zip(names, kinds, expected, cells):
            if differs(kind, wanted, cell, relative):
                outcome = " ".join([answer.outcome, *answer.invalid])
                found.append(f"case {number + 1} ({outcome}), {name}: {cell!r} instead of {wanted!r}; {case}")
    return found


def summary_differences(model, cases, summary):
    """What the command counts of a run."""
    answers = [model.answer(case) for case in cases]
    outcomes = [answer.outcome for answer in answers]
    expected = {
        "rows": len(cases),
        "rows_without_result": {"invalid_value": outcomes.count("invalid"),
                                "nothing_possible": outcomes.count("nothing")},
        "rows_without_known_value": sum(a.known == 0 and a.outcome != "invalid" for a in answers),
        "fields": {name: sum(name in answer.unknown for answer in answers) for name, *_ in model.inputs},
    }
    summary["fields"] = {field["name"]: field["unknown"] for field in summary["fields"]}
    return [f"{key}: {summary[key]} instead of {value}" for key, value in expected.items() if summary[key] != value]


def read_table(text):
    return [row or [""] for row in csv.reader(io.StringIO(text))]


def compare(command, folder, document, rows, options):
    """The differences of one document; its file and its table stay in the folder."""
    path, table = folder / "model.pmml", folder / "cases.csv"
    write(document, path)
    with open(table, "w", newline="", encoding="utf-8") as stream:
        csv.writer(stream, lineterminator="\n").writerows(rows)
    model = Model(path, plain="plain" in options)
    usual = "usual" in options or not model.outputs
    summary = folder / "summary.json"
    run = subprocess.run([command, "score", "--rule", "standard", "--only-scores", "--summary", summary, *options, path,
                          table], capture_output=True, encoding="utf-8", check=False)
    if run.returncode != 0:
        return [f"exit status {run.returncode}: {run.stderr}"]
    has_densities = document.find(".//TargetValueStats") is not None
    relative = RELATIVE["densities" if has_densities else "counts"]
    cases = read_rows(table)
    return differences(model, cases, read_table(run.stdout), usual, relative) + summary_differences(
        model, cases, json.loads(summary.read_text(encoding="utf-8")))


def drawn(draw):
    """A document in some producer's manner, and the options to score it with."""
    if draw.random() < 0.1:
        document, rows = draw.choice(manners.OWN_KINDS)(draw)
    else:
        document, rows = draw_document(draw)
        draw.choice(manners.MANNERS)(document)
    options = ["--densities", "plain"] if draw.random() < 0.3 else []
    return document, rows, options + (["--columns", "usual"] if draw.random() < 0.3 else [])


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("command", type=pathlib.Path)
    parser.add_argument("--documents", type=int, default=400)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--keep", type=pathlib.Path)
    given = parser.parse_args()
    differing = 0
    with tempfile.TemporaryDirectory() as folder:
        for seed in range(given.seed, given.seed + given.documents):
            document, rows, options = drawn(random.Random(seed))
            found = compare(given.command, pathlib.Path(folder), document, rows, options)
            if not found:
                continue
            differing += 1
            print(f"seed {seed}, {' '.join(options)}: {len(found)} differences, first\n  {found[0]}")
            if given.keep:
                kept = given.keep / str(seed)
                kept.mkdir(parents=True, exist_ok=True)
                for name in ("model.pmml", "cases.csv"):
                    (kept / name).write_bytes((pathlib.Path(folder) / name).read_bytes())
    print(f"{given.documents} documents compared, {differing} differ")
    return 1 if differing or given.documents == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
