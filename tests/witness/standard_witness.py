#!/usr/bin/env python3
"""Scores Naive Bayes documents as the PMML standard says: an independent witness for `nbscore score --rule standard`.

    standard_witness.py [--plain] [--usual] DOCUMENT.pmml ROWS.csv

It shares nothing with the engine: another language, another XML parser, another CSV parser, and decimals of 50 digits
with exponents that do not run out in place of doubles. It reads sound documents only.
"""
import csv
import decimal
import sys
import xml.etree.ElementTree as ElementTree
from collections import namedtuple

from expressions import child, children, converted, evaluate, expression_of, local, number_of, text_of
from fields import CaseScope, DataField, DerivedField, InvalidValue, OutputScope, Treatment

decimal.setcontext(decimal.Context(prec=50, Emax=decimal.MAX_EMAX, Emin=decimal.MIN_EMIN))
Decimal = decimal.Decimal
PI = Decimal("3.14159265358979323846264338327950288419716939937510582097494459")


PLACE_HOLDER = "DiscretePlaceHolder"


def is_no_figure(text):
    """R writes these where nothing was counted, or not enough."""
    return text.strip() in ("NaN", "nan", "NA")


def exactly(text):
    """The double that a text stands for, as a decimal; what is no figure counts nothing."""
    return Decimal(0) if is_no_figure(text) else Decimal(float(text))


class Density:
    """The density of one target category. A category has none without an element, nor where a figure is none: so R
    writes those of a category that never occurred."""

    def __init__(self, element=None):
        unknown = element is None or any(is_no_figure(text) for _, text in element.items())
        self.kind = None if unknown else local(element)
        self.figures = {} if unknown else {name: exactly(text) for name, text in element.items()}

    def at(self, x):
        """None where the input says nothing of the value at all."""
        x, figures = Decimal(x), self.figures
        if self.kind == "PoissonDistribution":
            if x < 0 or x != x.to_integral_value():
                return None
            result = (-figures["mean"]).exp()
            for factor in range(1, int(x) + 1):
                result *= figures["mean"] / factor
            return result
        if self.kind == "UniformDistribution":
            # Without a width there is no density, as there is none without a variance.
            inside = figures["lower"] < figures["upper"] and figures["lower"] <= x <= figures["upper"]
            return 1 / (figures["upper"] - figures["lower"]) if inside else Decimal(0)
        if self.kind is None or figures["variance"] <= 0:
            return Decimal(0)
        variance = figures["variance"]
        return (-(x - figures["mean"]) ** 2 / (2 * variance)).exp() / (2 * PI * variance).sqrt()


class Table:
    """An input with counts."""

    def __init__(self, element, key, model):
        self.key, self.threshold, rows = key, model.threshold, {}
        for pair in children(element, "PairCounts"):
            rows[key(pair.get("value"))] = model.counts(child(pair, "TargetValueCounts"))
        self.rows = rows
        self.totals = [sum(row[k] for row in rows.values()) for k in range(len(model.categories))]

    def factors(self, value, plain):
        row = self.rows.get(value)
        if row is None:
            return None
        return [count / total if count and total else self.threshold for count, total in zip(row, self.totals)]


class Statistics:
    """An input with a density for each target category."""

    def __init__(self, element, model):
        self.threshold = model.threshold
        by_category = {model.target.key(stat.get("value")): Density(list(stat)[-1])
                       for stat in children(element, "TargetValueStat")}
        self.densities = [by_category.get(category, Density()) for category in model.categories]

    def factors(self, value, plain):
        number = number_of(value)
        if number is None:
            return None
        densities = [density.at(number) for density in self.densities]
        if None in densities:
            return None
        if plain:
            return [self.threshold if float(density) == 0 else density for density in densities]
        return [max(density, self.threshold) for density in densities]


# The field is a name, or a field of the input's own. The sources are the data fields that a derived one is computed from.
Input = namedtuple("Input", "name field judge sources")


def data_fields_read(inputs, derived):
    """Names of the data fields that inputs read, themselves or by derived fields, each once."""
    found, left = [], [e.get("field") or e.get("fieldName") for input_ in inputs for e in input_.iter()]
    while left:
        name = left.pop()
        if name in derived:
            left += [e.get("field") for e in derived[name].expression.iter()]
        elif name is not None and name not in found:
            found.append(name)
    return found


class Answer:
    """What a case gives: the fields whose value is invalid, and what each category has, which may be nothing."""

    def __init__(self, outcome, invalid, probabilities, known=0, unknown=()):
        self.outcome, self.invalid, self.probabilities = outcome, invalid, probabilities
        # How many inputs have a value that the model knows, and the names of those whose value it does not.
        self.known, self.unknown = known, unknown
        self.best = probabilities.index(max(probabilities)) if probabilities else None


def within(element, name):
    return [found for found in element.iter() if local(found) == name]


def is_place_holder(element):
    """Where no input has counts, a schema of its time wanted one all the same."""
    return element.get("fieldName") == PLACE_HOLDER and counted_values(element) == ["pseudoValue"]


def counted_values(element):
    return [pair.get("value") for pair in children(element, "PairCounts")]


def settle_names(root, known):
    """Names that differ from a field's in blanks around them are made the field's."""
    trimmed = {name.strip(): name for name in known if name is not None}
    for element in root.iter():
        for attribute in {"MiningField": ["name"], "BayesInput": ["fieldName"], "BayesOutput": ["fieldName"],
                          "Target": ["field"], "FieldRef": ["field"]}.get(local(element), []):
            name = element.get(attribute)
            if name is not None and name not in known and name.strip() in trimmed:
                element.set(attribute, trimmed[name.strip()])


class Given:
    """The outputs of a case by their names, each computed when it is asked for."""

    def __init__(self, fields, compute):
        self.fields, self.compute, self.values = {f.get("name"): f for f in fields}, compute, {}

    def value(self, name):
        if name not in self.values:
            self.values[name] = self.compute(self.fields[name])
        return self.values[name]

    def readable(self, name):
        """As expressions see it."""
        value = self.value(name)
        return float(value) if isinstance(value, Decimal) else value


class Model:
    def __init__(self, path, plain=False):
        root, self.plain = ElementTree.parse(path).getroot(), plain
        outer = children(root, "NaiveBayesModel", "MiningModel", "NaiveBayes")[0]
        element = within(outer, "NaiveBayesModel")[0]
        around = [element] if outer is element else [outer, element]
        self.fields = {f.get("name"): DataField(f) for f in children(child(root, "DataDictionary"), "DataField")}
        transformations = children(root, "TransformationDictionary")
        for part in around:
            transformations += children(part, "LocalTransformations")
        self.functions = {f.get("name"): f for t in transformations for f in children(t, "DefineFunction")}
        derived = {f.get("name"): DerivedField(f) for t in transformations for f in children(t, "DerivedField")}
        inputs = [e for e in within(element, "BayesInput") if not is_place_holder(e)]
        for known in (self.fields, derived):
            settle_names(root, known)
        for e in inputs:
            if e.get("fieldName") in derived:
                derived[e.get("fieldName")].count(counted_values(e))
        self.read_schema([s for part in reversed(around) for s in children(part, "MiningSchema")][0],
                         data_fields_read(inputs, derived))
        self.fields.update(derived)
        output = within(element, "BayesOutput")[0]
        self.target = self.fields[self.target_name or output.get("fieldName")]
        entries = child(output, "TargetValueCounts")
        self.categories = self.target.values or [self.target.key(e.get("value")) for e in entries]
        # Truth values are one however they are spelt, and a prediction is spelt as the document has it.
        self.predictions = self.categories if not self.target.truth else (
            self.target.texts or [e.get("value") for e in entries])
        self.threshold = exactly(element.get("threshold") or outer.get("threshold"))
        self.class_counts = self.counts(entries)
        self.inputs = [self.read_input(e, derived) for e in inputs]
        self.read_targets([t for part in around for t in children(part, "Targets")])
        outputs = [children(o, "OutputField") for part in around for o in children(part, "Output")] or [[]]
        # The outer model's output names the columns. What the inner one says again is said already.
        self.outputs = [f for fields in reversed(outputs) for f in fields]
        self.first_output = outputs[0]

    def read_schema(self, schema, fields_read):
        self.target_name, self.treatments = None, []
        for mining_field in children(schema, "MiningField"):
            if mining_field.get("name") == PLACE_HOLDER and PLACE_HOLDER not in self.fields:
                continue
            usage, field = mining_field.get("usageType", "active"), self.fields[mining_field.get("name")]
            field.optype = mining_field.get("optype", field.optype)
            if usage in ("target", "predicted"):
                self.target_name = field.name
            elif usage == "active" and field.name not in (PLACE_HOLDER, self.target_name):
                self.treatments.append(Treatment(field, mining_field))
        listed = [mining_field.get("name") for mining_field in children(schema, "MiningField")]
        unlisted = [name for name in fields_read if name not in listed]
        self.treatments += [Treatment(self.fields[name], {}) for name in unlisted]

    def counts(self, entries):
        found = {self.target.key(e.get("value")): exactly(e.get("count")) for e in entries}
        return [found.get(category, Decimal(0)) for category in self.categories]

    def read_input(self, element, derived):
        own, statistics = child(element, "DerivedField"), child(element, "TargetValueStats")
        field = self.fields[element.get("fieldName")] if own is None else DerivedField(own)
        if own is not None:
            field.count(counted_values(element))
        judge = Statistics(statistics, self) if statistics is not None else Table(element, field.key, self)
        sources = data_fields_read([field.expression], derived) if isinstance(field, DerivedField) else []
        return Input(element.get("fieldName"), element.get("fieldName") if own is None else field, judge, sources)

    def read_targets(self, elements):
        values = {self.target.key(v.get("value")): v for t in elements for f in t for v in children(f, "TargetValue")}
        shares = [values[c].get("priorProbability") for c in self.categories if c in values]
        complete = len(shares) == len(self.categories) and None not in shares
        self.without_result = [exactly(share) for share in shares] if complete else None
        self.display = dict(self.target.display)
        self.display.update({c: v.get("displayValue") for c, v in values.items() if v.get("displayValue")})

    def treated(self, case):
        """The treated value of each field, and the names of those whose value ends the case."""
        values, invalid = {}, []
        for treatment in self.treatments:
            name = treatment.field.name
            try:
                values[name] = treatment.treated(case.get(name))
            except InvalidValue:
                invalid.append(name)
        return values, invalid

    def answer(self, case):
        values, invalid = self.treated(case)
        if invalid:
            return Answer("invalid", invalid, self.without_result)
        scope = CaseScope(self.fields, self.functions, values)
        likelihoods, known, unknown = list(self.class_counts), 0, []
        for name, field, judge, sources in self.inputs:
            value = field.value(scope) if isinstance(field, DerivedField) else values.get(field, scope.value(field))
            factors = None if value is None else judge.factors(value, self.plain)
            # A number in no bin, for example, has no derived value, and is as unknown as a value that was not counted.
            has_values = sources and all(values.get(source) is not None for source in sources)
            if factors is None:
                unknown += [name] if value is not None or has_values else []
            else:
                known += 1
                likelihoods = [likelihood * factor for likelihood, factor in zip(likelihoods, factors)]
        total = sum(likelihoods)
        if total == 0:
            return Answer("nothing", [], self.without_result, known, unknown)
        return Answer("scored", [], [likelihood / total for likelihood in likelihoods], known, unknown)

    def usual_columns(self):
        return ["predicted_" + self.target.name, "confidence"] + [
            "probability_" + text_of(prediction) for prediction in self.predictions]

    def usual_cells(self, case):
        answer = self.answer(case)
        if answer.best is None:
            return answer, [None] * (2 + len(self.categories))
        return answer, [self.predictions[answer.best], answer.probabilities[answer.best]] + answer.probabilities

    def columns(self):
        return [field.get("name") for field in self.result_fields()]

    def result_fields(self):
        """The outputs that are columns; the others are there for expressions."""
        return [field for field in self.first_output if field.get("isFinalResult", "true") == "true"]

    def cells(self, case):
        """What the document's Output asks for."""
        answer = self.answer(case)
        given = Given(self.outputs, lambda field: self.output(field, case, answer, given))
        return answer, [given.value(name) for name in self.columns()]

    def output(self, field, case, answer, given):
        feature = field.get("feature", "predictedValue")
        if feature == "warning":
            return None if answer.outcome == "scored" else answer.invalid or ["no category"]
        if feature in ("transformedValue", "decision"):
            scope = CaseScope(self.fields, self.functions, self.treated(case)[0])
            result = evaluate(expression_of(field), OutputScope(scope, given, field.get("name")))
            return converted(result, field.get("dataType"))
        if answer.best is None:
            return None
        if feature == "predictedValue":
            return self.predictions[answer.best]
        if feature == "predictedDisplayValue":
            return self.display.get(self.categories[answer.best], text_of(self.predictions[answer.best]))
        wanted = field.get("value")
        index = answer.best if wanted is None else self.categories.index(self.target.key(wanted))
        if feature == "residual":
            actual = case.get(self.target.name)
            if actual in (None, ""):
                return None
            return (self.target.key(actual) == self.categories[index]) - answer.probabilities[index]
        return answer.probabilities[index]


def read_rows(path):
    with open(path, newline="", encoding="utf-8") as stream:
        return list(csv.DictReader(stream))


def cell_text(value):
    return "" if value is None else repr(float(value)) if isinstance(value, Decimal) else text_of(value)


def main(arguments):
    document, rows = [argument for argument in arguments if not argument.startswith("--")]
    model = Model(document, plain="--plain" in arguments)
    usual = "--usual" in arguments or not model.outputs
    writer = csv.writer(sys.stdout, lineterminator="\n")
    writer.writerow(model.usual_columns() if usual else model.columns())
    for case in read_rows(rows):
        _, cells = model.usual_cells(case) if usual else model.cells(case)
        writer.writerow([cell_text(cell) for cell in cells])


if __name__ == "__main__":
    main(sys.argv[1:])
