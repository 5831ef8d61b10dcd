#!/usr/bin/env python3
"""Scores a plain Naive Bayes document straight from the formulas: an independent witness for the case files.

    witness.py DOCUMENT.pmml ROWS.csv      writes the scored table on standard output
    witness.py --check FOLDER              compares every FOLDER/*/expected.csv with what the witness gives

It shares nothing with the engine: another language, another XML parser, another CSV parser, another number printer.
It reads well-formed, consistent documents only; refusals are described by the case files themselves.
"""
import csv
import io
import pathlib
import sys
import xml.etree.ElementTree as ElementTree


def local(element):
    return element.tag.rsplit("}", 1)[-1]


def children(element, name):
    return [child for child in element if local(child) == name]


def anywhere(element, name):
    return [found for found in element.iter() if local(found) == name]


def number_text(number):
    text = repr(float(number))
    return text[:-2] if text.endswith(".0") else text


def number_or_none(text):
    try:
        return float(text)
    except ValueError:
        return None


class Field:
    def __init__(self, element):
        self.name = element.get("name")
        data_type = element.get("dataType")
        optype = element.get("optype")
        values = children(element, "Value")
        if data_type is None:
            self.numeric = optype == "continuous"
        else:
            self.numeric = data_type in ("integer", "float", "double")
        if optype is None:
            optype = "continuous" if self.numeric and not values else "categorical"
        self.continuous = optype == "continuous"
        self.values = [self.key(v.get("value")) for v in values if v.get("property", "valid") == "valid"]
        self.missing = [v.get("value") for v in values if v.get("property") == "missing"]

    def key(self, text):
        return float(text) if self.numeric else text

    def text(self, key):
        return number_text(key) if self.numeric else key


def total(numbers):
    """Plain addition from the left: the built-in sum rounds differently in newer versions of the language."""
    result = 0.0
    for number in numbers:
        result += number
    return result


def code_of(keys, key):
    return keys.index(key) if key in keys else None


def target_counts(element, target):
    counts = [0.0] * len(target.values)
    for entry in children(element, "TargetValueCount"):
        code = code_of(target.values, target.key(entry.get("value")))
        if code is not None:
            counts[code] = float(entry.get("count"))
    return counts


class Input:
    def __init__(self, element, field, target, threshold):
        self.field = field
        self.cutpoints = None
        self.keys = list(field.values)
        rows = {}
        if field.continuous:
            bins = anywhere(element, "DiscretizeBin")
            self.cutpoints = [float(children(b, "Interval")[0].get("leftMargin")) for b in bins[1:]]
        for pair in children(element, "PairCounts"):
            if field.continuous:
                row = int(pair.get("value"))
            else:
                key = field.key(pair.get("value"))
                if key not in self.keys:
                    self.keys.append(key)
                row = self.keys.index(key)
            rows[row] = target_counts(children(pair, "TargetValueCounts")[0], target)
        height = len(self.cutpoints) + 1 if field.continuous else len(self.keys)
        height = max([height] + [row + 1 for row in rows])
        table = [rows.get(row, [0.0] * len(target.values)) for row in range(height)]
        occupied = len([row for row in table if total(row) > 0])
        self.probabilities = []
        for row in table:
            if occupied == 0:
                self.probabilities.append([threshold] * len(row))
                continue
            totals = [total(other[j] for other in table) for j in range(len(row))]
            self.probabilities.append(
                [(threshold + row[j]) / (occupied * threshold + totals[j]) for j in range(len(row))])

    def is_missing(self, cell):
        return cell in self.field.missing or (
            self.field.numeric and float(cell) in [number_or_none(text) for text in self.field.missing])

    def code(self, cell):
        if cell == "" or (self.field.continuous and self.is_missing(cell)):
            return None
        key = self.field.key(cell)
        if not self.field.continuous:
            return code_of(self.keys, key)
        return len([cutpoint for cutpoint in self.cutpoints if key > cutpoint])


class Model:
    def __init__(self, path):
        root = ElementTree.parse(path).getroot()
        fields = {}
        for element in children(children(root, "DataDictionary")[0], "DataField"):
            fields.setdefault(element.get("name"), Field(element))
        model = anywhere(root, "NaiveBayesModel")[0]
        self.threshold = float(model.get("threshold"))
        for schema in anywhere(children(model, "MiningSchema")[0], "MiningField"):
            if schema.get("usageType") == "predicted":
                self.target = fields[schema.get("name")]
        self.inputs = [Input(element, fields[element.get("fieldName")], self.target, self.threshold)
                       for group in children(model, "BayesInputs") for element in children(group, "BayesInput")]
        self.counts = target_counts(children(children(model, "BayesOutput")[-1], "TargetValueCounts")[0], self.target)
        bottom = len(self.counts) * self.threshold + 1 / self.threshold
        self.priors = [(self.threshold + count) / bottom for count in self.counts]

    def probabilities(self, case):
        codes = [input_.code(case[input_.field.name]) for input_ in self.inputs]
        if all(code is None for code in codes):
            return list(self.priors)
        joint = []
        for target, prior in enumerate(self.priors):
            product = prior
            for input_, code in zip(self.inputs, codes):
                if code is not None:
                    product *= input_.probabilities[code][target]
            joint.append(product)
        evidence = total(joint)
        return [product / evidence for product in joint]

    def predicted(self, probabilities):
        """The first category with the highest probability, unless several later ones tie with it: then, among
        those but the first, one with a larger count takes over. Category 0 itself never counts as a tie."""
        top = max(probabilities)
        best = probabilities.index(top)
        ties = [i for i, p in enumerate(probabilities) if p == top and i > 0]
        if len(ties) > 1:
            largest = int(self.counts[best])
            for tie in ties[1:]:
                if self.counts[tie] > largest:
                    best, largest = tie, int(self.counts[tie])
        return best

    def score(self, rows):
        table = list(csv.reader(rows))
        out = io.StringIO()
        writer = csv.writer(out, lineterminator="\n")
        writer.writerow(table[0] + ["predicted_" + self.target.name, "confidence"] +
                        ["probability_" + self.target.text(value) for value in self.target.values])
        for row in [line or [""] for line in table[1:]]:
            probabilities = self.probabilities(dict(zip(table[0], row)))
            best = self.predicted(probabilities)
            writer.writerow(row + [self.target.text(self.target.values[best]), number_text(probabilities[best])] +
                            [number_text(p) for p in probabilities])
        return out.getvalue()


def score_files(document, rows):
    with open(rows, newline="", encoding="utf-8-sig") as stream:
        return Model(document).score(stream)


def check(folder):
    checked = 0
    failed = 0
    for expected in sorted(pathlib.Path(folder).glob("*/expected.csv")):
        given = score_files(expected.with_name("document.pmml"), expected.with_name("rows.csv"))
        checked += 1
        if given.encode() != expected.read_bytes():
            failed += 1
            print(f"{expected}: the witness gives\n{given}")
    print(f"{checked - failed} passed, {failed} failed")
    return 1 if failed or not checked else 0


if __name__ == "__main__":
    if sys.argv[1] == "--check":
        sys.exit(check(sys.argv[2]))
    sys.stdout.write(score_files(sys.argv[1], sys.argv[2]))
