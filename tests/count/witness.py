#!/usr/bin/env python3
"""Counts random tables a second time, with the csv module and dictionaries, and holds `nbscore count` to that.

    witness.py NBSCORE [--tables N] [--seed S]

Of each table: every count in the document is the one that is counted here; the document is the same for another order
of rows and another number of threads; its own test cases hold; and counting two halves and adding them up gives the
same document, byte for byte, as counting the whole.
"""

import argparse
import collections
import csv
import pathlib
import random
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree

PMML = "{http://www.dmg.org/PMML-4_4}"
TEXTS = ["red", "green", "blue", "a,b", 'say "x"', "<&>", "two\nlines", "é", "007", "1.5x", " blank ", "(other)"]


class Table:
    """A random table, and which kind of values each column has."""

    def __init__(self, draw):
        self.draw = draw
        self.target = draw.choice(["target", "the target", "x<y"])
        self.categories = draw.sample(["no", "yes", "maybe", "1", "0", "none & all"], draw.randint(2, 4))
        self.kinds = {}
        for number in range(draw.randint(1, 5)):
            self.kinds[f"{draw.choice(['a', 'column ', 'ß', '4'])}{number}"] = draw.choice(["text", "whole", "number"])
        self.texts = {name: draw.sample(TEXTS, draw.randint(1, 6)) + ["letters"] for name in self.kinds}
        self.rows = [self.make_row() for _ in range(draw.choice([2, 30, 400, 3000]))]
        for category, row in zip(self.categories, self.rows):
            row[self.target] = category
        for name, kind in self.kinds.items():
            if kind == "text":
                self.rows[0][name] = self.rows[-1][name] = "letters"
            if kind == "whole":
                self.rows[0][name] = self.rows[-1][name] = "3"
            if kind == "number":
                self.rows[0][name] = self.rows[-1][name] = "0.25"
        self.names = list(self.kinds)
        self.names.insert(draw.randint(0, len(self.names)), self.target)

    def make_row(self):
        draw = self.draw
        row = {self.target: draw.choice(self.categories) if draw.random() < 0.97 else ""}
        shift = self.categories.index(row[self.target]) if row[self.target] else 0
        for name, kind in self.kinds.items():
            if draw.random() < 0.1:
                row[name] = ""
            elif kind == "text":
                row[name] = draw.choice(self.texts[name])
            elif kind == "whole":
                row[name] = str(draw.randint(-3, 6) + shift)
            else:
                row[name] = draw.choice(["%.3f", "%.1f", "%g", "%e"]) % draw.gauss(10.0 * shift, 8.0)
        return row

    def write(self, path, rows):
        with open(path, "w", newline="", encoding="utf-8") as file:
            writer = csv.DictWriter(file, self.names, lineterminator="\n")
            writer.writeheader()
            writer.writerows(rows)


def read_counts(parent):
    return {count.get("value"): float(count.get("count")) for count in parent.iter(PMML + "TargetValueCount")}


def expect(is_so, what):
    if not is_so:
        raise AssertionError(what)


def count_here(table, name, value_of):
    """How often each value of a column occurs with each category, and how often none."""
    counts = collections.defaultdict(collections.Counter)
    missing = 0
    for row in table.rows:
        if row[table.target] == "":
            continue
        if row[name] == "":
            missing += 1
        else:
            counts[value_of(row[name])][row[table.target]] += 1
    return counts, missing


def bin_of(margins):
    return lambda text: str(sum(1 for margin in margins if float(text) > margin))


def check_document(table, path, min_count):
    root = ElementTree.parse(path).getroot()
    model = root.find(PMML + "NaiveBayesModel")
    of_target = collections.Counter(row[table.target] for row in table.rows if row[table.target] != "")
    expect(read_counts(model.find(PMML + "BayesOutput")) == dict(of_target), "counts of the target")
    missing_told = {stats.get("field"): float(stats.find(PMML + "Counts").get("missingFreq"))
                    for stats in model.iter(PMML + "UnivariateStats")}
    inputs = {}
    for element in model.iter(PMML + "BayesInput"):
        inputs[element.get("fieldName")] = element
    grouped = {field.get("name"): field.find(f".//{PMML}FieldRef").get("field")
               for field in root.iter(PMML + "DerivedField") if field.find(PMML + "Apply") is not None}
    seen = set()
    for field_name, element in inputs.items():
        name = grouped.get(field_name, field_name)
        seen.add(name)
        margins = [float(interval.get("rightMargin")) for interval in element.iter(PMML + "Interval")
                   if interval.get("rightMargin") is not None]
        if element.find(PMML + "DerivedField") is not None:
            counts, missing = count_here(table, name, bin_of(margins))
        elif table.kinds[name] == "whole":
            counts, missing = count_here(table, name, lambda text: str(int(text)))
        else:
            counts, missing = count_here(table, name, str)
        if field_name in grouped:
            rare = [value for value, by_category in counts.items() if sum(by_category.values()) < min_count]
            expect(rare, f"nothing rare in {name}")
            together = collections.Counter()
            for value in rare:
                together.update(counts.pop(value))
            other = [pair.get("value") for pair in element.iter(PMML + "PairCounts") if pair.get("value") not in counts]
            expect(len(other) == 1, f"rare values of {name} are {other}")
            counts[other[0]] = together
        found = {pair.get("value"): {key: count for key, count in read_counts(pair).items() if count}
                 for pair in element.iter(PMML + "PairCounts")}
        found = {value: by_category for value, by_category in found.items() if by_category}
        expect(found == {value: dict(by_category) for value, by_category in counts.items()}, f"counts of {name}")
        expect(missing_told[name] == missing, f"missing values of {name}")
    return seen


def check_table(nbscore, folder, table, draw):
    def run(*arguments):
        done = subprocess.run([nbscore, *map(str, arguments)], capture_output=True, text=True, check=False)
        expect(done.returncode == 0, f"{arguments}: {done.stderr}")
        return done.stderr

    whole, mixed, first, second = (folder / name for name in ("whole.csv", "mixed.csv", "first.csv", "second.csv"))
    table.write(whole, table.rows)
    rows = table.rows[:]
    draw.shuffle(rows)
    table.write(mixed, rows)
    half = len(table.rows) // 2
    table.write(first, table.rows[:half])
    table.write(second, table.rows[half:])

    min_count = draw.choice([1, 1, 40])
    options = ["--target", table.target, "--min-count", min_count]
    options += draw.choice([[], ["--bins", draw.randint(2, 30)], ["--bins-by", "entropy"]])
    options += draw.choice([[], ["--threshold", "0.01"], ["--counts-per-column", "1024"]])
    model, again = folder / "model.pmml", folder / "again.pmml"
    try:
        told = run("count", whole, *options, "-o", model, "--threads", "1")
    except AssertionError as failure:
        if "the table has no column that could be an input" in str(failure):
            return  # a few numbers that are all the same
        raise
    counted = check_document(table, model, min_count)
    for name in table.kinds:
        expect((name in counted) != (f'left out: "{name}"' in told), f"{name} is an input or left out: {told}")
    run("count", mixed, *options, "-o", again, "--threads", draw.randint(1, 5), "--quiet")
    expect(model.read_bytes() == again.read_bytes(), "another order of rows gives another document")
    run("verify", model)
    run("check", model)
    standard = folder / "standard.pmml"
    run("count", whole, *options, "-o", standard, "--rule", "standard", "--quiet")
    run("verify", standard, "--rule", "standard")

    if half < 2:
        return
    options = ["--target", table.target, "--quiet"]
    for name, kind in table.kinds.items():
        if kind != "text":
            options += ["--cutpoints", name + "=-1.5,0,4"]
    options += ["--inputs", ",".join(table.kinds)]
    parts = [folder / "first.pmml", folder / "second.pmml"]
    try:
        run("count", first, *options, "-o", parts[0])
        run("count", second, *options, "-o", parts[1])
    except AssertionError:
        return  # one half has one category only
    run("count", whole, *options, "-o", model)
    run("merge", *parts, "-o", again)
    expect(model.read_bytes() == again.read_bytes(), "the sum of the halves is not the whole")
    run("count", second, "--into", parts[0], "-o", again, "--quiet")
    expect(model.read_bytes() == again.read_bytes(), "one half added to the other is not the whole")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("nbscore")
    parser.add_argument("--tables", type=int, default=40)
    parser.add_argument("--seed", type=int, default=1)
    arguments = parser.parse_args()
    for number in range(arguments.seed, arguments.seed + arguments.tables):
        draw = random.Random(number)
        with tempfile.TemporaryDirectory() as folder:
            try:
                check_table(arguments.nbscore, pathlib.Path(folder), Table(draw), draw)
            except AssertionError as difference:
                sys.exit(f"table {number}: {difference}")
    print(f"{arguments.tables} tables agree")


main()
