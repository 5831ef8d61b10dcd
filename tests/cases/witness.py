#!/usr/bin/env python3
"""Scores Naive Bayes documents straight from the formulas: an independent witness for the case files.

    witness.py DOCUMENT.pmml ROWS.csv          writes the scored table on standard output
    witness.py --long DOCUMENT.pmml ROWS.csv   the same of a set of sub-models, a row for each case and sub-model
    witness.py --check FOLDER                  compares every FOLDER/*/expected.csv and FOLDER/*/expected-long.csv
                                               with what the witness gives

It shares nothing with the engine: another language, another XML parser, another CSV parser, another number printer.
It reads well-formed, consistent documents only; refusals are described by the case files themselves.
"""
import csv
import io
import math
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
        renamed = children(element, "FieldRef")
        self.source = renamed[0].get("field") if renamed else None

    def is_missing(self, cell):
        return cell in self.missing or (
            self.numeric and float(cell) in [number_or_none(text) for text in self.missing])

    def key(self, text):
        """Numeric fields read every text that is not a number as one value, which no cell has."""
        return number_or_none(text) if self.numeric else text

    def text(self, key):
        return number_text(key) if self.numeric else key


def total(numbers):
    """Plain addition from the left: the built-in sum rounds differently in newer versions of the language."""
    result = 0.0
    for number in numbers:
        result += number
    return result


def divided(dividend, divisor):
    """Division as the processor does it, even by zero."""
    if divisor != 0:
        return dividend / divisor
    if dividend == 0 or math.isnan(dividend):
        return math.nan
    return math.copysign(math.inf, dividend) * math.copysign(1.0, divisor)


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
                [divided(threshold + row[j], occupied * threshold + totals[j]) for j in range(len(row))])

    def code(self, cell):
        if cell == "" or (self.field.continuous and self.field.is_missing(cell)):
            return None
        key = self.field.key(cell)
        if not self.field.continuous:
            return code_of(self.keys, key)
        return len([cutpoint for cutpoint in self.cutpoints if key > cutpoint])


class Classifier:
    """One model element: its inputs, their probabilities and the priors."""

    def __init__(self, element, fields, target):
        self.fields = fields
        threshold = float(element.get("threshold"))
        self.inputs = [Input(input_, fields[input_.get("fieldName")], target, threshold)
                       for group in children(element, "BayesInputs") for input_ in children(group, "BayesInput")]
        output = children(element, "BayesOutput")[-1]
        self.counts = target_counts(children(output, "TargetValueCounts")[0], target)
        bottom = len(self.counts) * threshold + 1 / threshold
        self.priors = [(threshold + count) / bottom for count in self.counts]

    def cell(self, field, case):
        """A field that renames another has the other's value, unless that is missing."""
        if field.source is None:
            return case.get(field.name, "")  # only a target that is read may lack a column
        source = self.fields[field.source]
        cell = self.cell(source, case)
        return "" if cell == "" or source.is_missing(cell) else cell

    def joint(self, case):
        """Prior times the probabilities of the known values, per target value; None when nothing is known."""
        codes = [input_.code(self.cell(input_.field, case)) for input_ in self.inputs]
        if all(code is None for code in codes):
            return None
        joint = []
        for target, prior in enumerate(self.priors):
            product = prior
            for input_, code in zip(self.inputs, codes):
                if code is not None:
                    product *= input_.probabilities[code][target]
            joint.append(product)
        return joint


def predicted_field(element, fields):
    for schema in anywhere(children(element, "MiningSchema")[0], "MiningField"):
        if schema.get("usageType") == "predicted":
            return fields[schema.get("name")]
    return None


class Single:
    """A document with one classifier."""

    def __init__(self, elements, fields):
        self.target = predicted_field(elements[0], fields)
        self.classifier = Classifier(elements[0], fields, self.target)

    def probabilities(self, case):
        joint = self.classifier.joint(case)
        if joint is None:
            return list(self.classifier.priors)
        evidence = total(joint)
        return [product / evidence for product in joint]

    def predicted(self, probabilities):
        """The first category with the highest probability, unless several later ones tie with it: then, among
        those but the first, one with a larger count takes over. Category 0 itself never counts as a tie."""
        top = max(probabilities)
        best = probabilities.index(top)
        ties = [i for i, p in enumerate(probabilities) if p == top and i > 0]
        if len(ties) > 1:
            largest = int(self.classifier.counts[best])
            for tie in ties[1:]:
                if self.classifier.counts[tie] > largest:
                    best, largest = tie, int(self.classifier.counts[tie])
        return best

    def columns(self):
        return (["predicted_" + self.target.name, "confidence"] +
                ["probability_" + self.target.text(value) for value in self.target.values])

    def cells(self, case):
        probabilities = self.probabilities(case)
        best = self.predicted(probabilities)
        return ([self.target.text(self.target.values[best]), number_text(probabilities[best])] +
                [number_text(p) for p in probabilities])


class SubModel:
    def __init__(self, element, fields, target):
        self.name = element.get("modelName")
        self.classifier = Classifier(element, fields, target)
        figures = {"meanPerformance": "", "deviation": ""}
        for extension in children(element, "Extension"):
            name = extension.get("name")
            if name in ("stdDevPerformance", "trainingSampleSize"):
                name = "deviation"
            figures[name] = number_text(float(extension.get("value")))
        self.assessment = [figures["meanPerformance"], figures["deviation"]]

    def score(self, case):
        priors = self.classifier.priors
        joint = self.classifier.joint(case)
        if 0 in priors or joint is None:
            return priors[1]
        return divided(joint[1], total(joint))


class SubModels:
    """A document with any number of classifiers, each of which gives the probability of the target's second value."""

    def __init__(self, elements, fields):
        target = predicted_field(elements[0], fields) if elements else None
        self.models = [SubModel(element, fields, target) for element in elements]

    def labels(self):
        names = [model.name for model in self.models]
        numbered = {i for i, name in enumerate(names) if name == "" or names.count(name) > 1}
        while True:
            labels = [name if i not in numbered else f"{name}_{i}" if name else str(i)
                      for i, name in enumerate(names)]
            taken = {i for i, label in enumerate(labels) if labels.count(label) > 1} - numbered
            if not taken:
                return labels
            numbered |= taken

    def columns(self):
        return ["score_" + label for label in self.labels()]

    def cells(self, case):
        return [number_text(model.score(case)) for model in self.models]

    def long_rows(self, case):
        return [[label, number_text(model.score(case))] + model.assessment
                for label, model in zip(self.labels(), self.models)]


def read_model(path):
    root = ElementTree.parse(path).getroot()
    fields = {}
    for element in children(children(root, "DataDictionary")[0], "DataField"):
        fields.setdefault(element.get("name"), Field(element))
    for group in children(root, "TransformationDictionary"):
        for element in children(group, "DerivedField"):
            fields[element.get("name")] = Field(element)
    elements = anywhere(root, "NaiveBayesModel")
    if not elements or elements[0].get("algorithmName") == "SelfLearning":
        return SubModels(elements, fields)
    return Single(elements, fields)


def score_files(document, rows, long=False):
    model = read_model(document)
    with open(rows, newline="", encoding="utf-8-sig") as stream:
        table = list(csv.reader(stream))
    out = io.StringIO()
    writer = csv.writer(out, lineterminator="\n")
    added = ["model", "score", "assessment_mean", "assessment_std_dev"] if long else model.columns()
    writer.writerow(table[0] + added)
    for row in [line or [""] for line in table[1:]]:
        case = dict(zip(table[0], row))
        for cells in model.long_rows(case) if long else [model.cells(case)]:
            writer.writerow(row + cells)
    return out.getvalue()


def check(folder):
    checked = 0
    failed = 0
    for expected in sorted(pathlib.Path(folder).glob("*/expected*.csv")):
        if expected.with_name("rule.txt").exists():
            continue  # The standard's rule has a witness of its own, in tests/witness.
        given = score_files(expected.with_name("document.pmml"), expected.with_name("rows.csv"),
                            long=expected.name == "expected-long.csv")
        checked += 1
        if given.encode() != expected.read_bytes():
            failed += 1
            print(f"{expected}: the witness gives\n{given}")
    print(f"{checked - failed} passed, {failed} failed")
    return 1 if failed or not checked else 0


if __name__ == "__main__":
    if sys.argv[1] == "--check":
        sys.exit(check(sys.argv[2]))
    sys.stdout.write(score_files(*sys.argv[-2:], long=sys.argv[1] == "--long"))
