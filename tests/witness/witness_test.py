"""The witness itself, held to examples that were computed by hand; and the page and the case files, held to it."""
import math
import pathlib
import tempfile
import unittest
from decimal import Decimal

from compare import differences, read_table
from elements import (E, density_input, field_ref, gaussian, apply, constant, interval, naive_bayes, pmml, table_input,
                      write)
from standard_witness import Model, read_rows

NO_YES = ["no", "yes"]
TARGET = [E("DataField", {"name": "t", "optype": "categorical", "dataType": "string"},
            [E("Value", {"value": value}) for value in NO_YES])]


def text_field(name, *values):
    return E("DataField", {"name": name, "optype": "categorical", "dataType": "string"},
             [E("Value", {"value": value}) for value in values])


def number_field(name, *content):
    return E("DataField", {"name": name, "optype": "continuous", "dataType": "double"}, content)


class WitnessTest(unittest.TestCase):
    def model(self, fields, inputs, threshold=0.25, counts=(3, 1), treatments=None, parts=(), plain=False):
        """A model of the fields and the target, whose categories no and yes have three cases and one."""
        schema = [E("MiningField", {"name": "t", "usageType": "target"})] + [
            E("MiningField", {"name": field.get("name"), **(treatments or {})}) for field in fields]
        model = naive_bayes("t", threshold, schema, inputs, NO_YES, counts, parts)
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder, "model.pmml")
            write(pmml("hand", fields + TARGET, model), path)
            return Model(path, plain)

    def expect(self, model, case, no, yes):
        answer = model.answer(case)
        self.assertEqual("scored", answer.outcome)
        for expected, actual in zip((no, yes), answer.probabilities):
            self.assertAlmostEqual(expected, float(actual), delta=1e-15)

    def test_counts_are_shares_of_their_column_and_none_is_the_threshold(self):
        model = self.model([text_field("colour")],
                           [table_input("colour", NO_YES, [("red", [2, 0]), ("blue", [1, 1])])])
        # red: 3 * 2/3 = 2 against 1 * 0.25; blue: 3 * 1/3 = 1 against 1 * 1.
        self.expect(model, {"colour": "red"}, 2 / 2.25, 0.25 / 2.25)
        self.expect(model, {"colour": "blue"}, 0.5, 0.5)
        self.expect(model, {"colour": "green"}, 0.75, 0.25)
        self.expect(model, {}, 0.75, 0.25)

    def test_nothing_is_possible_without_a_threshold(self):
        rows = [("red", [2, 0]), ("blue", [0, 1])]
        inputs = [table_input(name, NO_YES, rows) for name in ("a", "b")]
        model = self.model([text_field("a"), text_field("b")], inputs, threshold=0)
        self.expect(model, {"a": "red"}, 1, 0)
        self.assertEqual("nothing", model.answer({"a": "red", "b": "blue"}).outcome)

    def test_densities_are_floored(self):
        inputs = [density_input("x", NO_YES, [gaussian(0, 1), gaussian(100, 1)])]
        at_zero = 1 / math.sqrt(2 * math.pi)
        model = self.model([number_field("x")], inputs, threshold=0.001)
        self.expect(model, {"x": "0"}, 3 * at_zero / (3 * at_zero + 0.001), 0.001 / (3 * at_zero + 0.001))
        self.expect(model, {"x": "80"}, 0.75, 0.25)
        # As doubles exp(-5000) and exp(-3200) are 0, exp(-200) is not.
        model = self.model([number_field("x")], inputs, threshold=0.001, plain=True)
        self.expect(model, {"x": "0"}, 3 * at_zero / (3 * at_zero + 0.001), 0.001 / (3 * at_zero + 0.001))
        self.expect(model, {"x": "80"}, 1, 0)

    def test_other_distributions(self):
        poisson = E("PoissonDistribution", {"mean": 2})
        uniform = E("UniformDistribution", {"lower": 0, "upper": 4})
        model = self.model([number_field("x")], [density_input("x", NO_YES, [poisson, uniform])], threshold=0)
        three = 3 * 8 * math.exp(-2) / 6  # three cases, mean 2, 3 events
        self.expect(model, {"x": "3"}, three / (three + 0.25), 0.25 / (three + 0.25))
        self.expect(model, {"x": "2.5"}, 0.75, 0.25)
        self.expect(model, {"x": "5"}, 1, 0)

    def test_no_variance_and_no_statistics_are_the_threshold(self):
        model = self.model([number_field("x")], [density_input("x", NO_YES, [gaussian(0, 0), None])], threshold=0.5)
        self.expect(model, {"x": "0"}, 0.75, 0.25)

    def test_no_width_and_no_figure_are_the_threshold(self):
        level = E("UniformDistribution", {"lower": 2, "upper": 2})
        for density in (level, gaussian(2, "NA"), gaussian("NaN", 1), gaussian(2, "1e-400")):
            model = self.model([number_field("x")], [density_input("x", NO_YES, [density, None])], threshold=0.5)
            self.expect(model, {"x": "2"}, 0.75, 0.25)
        model = self.model([text_field("a")], [table_input("a", NO_YES, [("b", ["NA", 1]), ("c", [1, 1])])])
        self.expect(model, {"a": "b"}, 0.75 / 1.25, 0.5 / 1.25)

    def test_truth_values_are_one_however_they_are_written(self):
        field = E("DataField", {"name": "b", "optype": "categorical", "dataType": "boolean"},
                  [E("Value", {"value": value}) for value in ("TRUE", "FALSE")])
        model = self.model([field], [table_input("b", NO_YES, [("1", [1, 1]), ("false", [2, 0])])], threshold=0)
        for yes in ("true", "True", "1", "1.0"):
            self.expect(model, {"b": yes}, 0.5, 0.5)
        self.expect(model, {"b": "0"}, 1, 0)
        self.assertEqual("invalid", model.answer({"b": "perhaps"}).outcome)

    def test_numbers_are_valid_inside_an_interval_or_where_they_are_listed(self):
        field = number_field("x", interval("closedOpen", 0, 10), E("Value", {"value": "99"}))
        model = self.model([field], [density_input("x", NO_YES, [gaussian(0, 1)] * 2)])
        self.assertEqual(["scored", "scored", "invalid", "invalid"],
                         [model.answer({"x": cell}).outcome for cell in ("4", "99.0", "10", "98")])

    def test_bins_may_have_names_in_a_field_of_numbers(self):
        bins = [E("DiscretizeBin", {"binValue": text}, [interval("closedOpen", left, left + 9)])
                for text, left in (("low", 0), ("2", 9))]
        own = E("DerivedField", {"optype": "categorical", "dataType": "double"}, [E("Discretize", {"field": "x"}, bins)])
        model = self.model([number_field("x")], [table_input("x", NO_YES, [("low", [1, 1]), ("2", [2, 0])], own)],
                           threshold=0)
        self.expect(model, {"x": "8"}, 0.5, 0.5)
        self.expect(model, {"x": "9"}, 1, 0)

    def test_bins_have_closures_and_gaps(self):
        bins = [E("DiscretizeBin", {"binValue": "low"}, [interval("closedOpen", 0, 10)]),
                E("DiscretizeBin", {"binValue": "high"}, [interval("openClosed", 10, 20)])]
        own = E("DerivedField", {"optype": "categorical", "dataType": "string"},
                [E("Discretize", {"field": "x", "mapMissingTo": "high"}, bins)])
        model = self.model([number_field("x")],
                           [table_input("x", NO_YES, [("low", [1, 0]), ("high", [0, 1])], own)])
        for cell, no, yes in (("0", 3, 0.25), ("10", 3, 1), ("20", 0.75, 1), ("21", 3, 1), ("", 0.75, 1)):
            self.expect(model, {"x": cell}, no / (no + yes), yes / (no + yes))

    def test_treatments(self):
        inputs = [density_input("x", NO_YES, [gaussian(0, 1), gaussian(1, 1)])]
        fields = [number_field("x", interval("closedClosed", -5, 5))]

        def ratio(x):
            """Of the likelihoods of yes and no."""
            return math.exp(-(x - 1) ** 2 / 2 + x ** 2 / 2) / 3

        for treatments, cell, used in (
                ({}, "2", 2), ({}, "6", "invalid"), ({"invalidValueTreatment": "asIs"}, "6", 6),
                ({"invalidValueTreatment": "asMissing"}, "6", None),
                ({"invalidValueTreatment": "asMissing", "missingValueReplacement": "3"}, "6", 3),
                ({"invalidValueTreatment": "asValue", "invalidValueReplacement": "4"}, "6", 4),
                ({"missingValueTreatment": "returnInvalid"}, "", "invalid"),
                ({"missingValueTreatment": "returnInvalid", "invalidValueTreatment": "asMissing"}, "6", "invalid"),
                ({"outliers": "asExtremeValues", "lowValue": -1, "highValue": 2}, "6", 2),
                ({"outliers": "asExtremeValues", "lowValue": -1, "highValue": 2}, "-6", -1),
                ({"outliers": "asMissingValues", "lowValue": -1, "highValue": 2}, "3", None),
                ({"outliers": "asMissingValues", "highValue": 2, "missingValueReplacement": "0"}, "3", 0)):
            with self.subTest(treatments=treatments, cell=cell):
                model = self.model(fields, inputs, threshold=0, treatments=treatments)
                if used == "invalid":
                    answer = model.answer({"x": cell})
                    self.assertEqual(("invalid", ["x"]), (answer.outcome, answer.invalid))
                else:
                    odds = 1 / 3 if used is None else ratio(used)
                    self.expect(model, {"x": cell}, 1 / (1 + odds), odds / (1 + odds))

    def test_outputs(self):
        output = E("Output", None, [
            E("OutputField", {"name": "p"}), E("OutputField", {"name": "s", "feature": "predictedDisplayValue"}),
            E("OutputField", {"name": "q", "feature": "probability", "value": "yes"}),
            E("OutputField", {"name": "r", "feature": "residual", "value": "yes"}),
            E("OutputField", {"name": "d", "feature": "decision"}, [
                apply("if", apply("greaterThan", field_ref("q"), constant(0.2)), constant("call", "string"),
                      constant("wait", "string"))])])
        targets = E("Targets", None, [E("Target", {"field": "t"}, [
            E("TargetValue", {"value": "no", "displayValue": "Not at all", "priorProbability": 0.4}),
            E("TargetValue", {"value": "yes", "priorProbability": 0.6})])])
        model = self.model([text_field("a", "known")], [table_input("a", NO_YES, [("known", [1, 1])])],
                           parts=[output, targets])
        _, cells = model.cells({"a": "", "t": "yes"})
        self.assertEqual(["no", "Not at all", 0.25, 0.75, "call"],
                         [cell if isinstance(cell, str) else float(cell) for cell in cells])
        answer, cells = model.cells({"a": "unknown"})
        self.assertEqual("invalid", answer.outcome)
        self.assertEqual(["yes", "yes", 0.6, None, "call"],
                         [float(cell) if isinstance(cell, Decimal) else cell for cell in cells])


    def test_outputs_hide_fields_from_one_another_only(self):
        def plus_one(name, field):
            return E("OutputField", {"name": name, "feature": "transformedValue", "dataType": "double"},
                     [apply("+", field_ref(field), constant(1))])

        output = E("Output", None, [plus_one("seen", "x"), plus_one("y", "y"), plus_one("after", "y"),
                                    plus_one("made", "twice"), E("OutputField", {
                                        "name": "x", "feature": "probability", "value": "no"})])
        twice = E("LocalTransformations", None, [E("DerivedField", {
            "name": "twice", "optype": "continuous", "dataType": "double"}, [
                apply("*", field_ref("x"), constant(2))])])
        same = [gaussian(0, 1)] * 2
        model = self.model([number_field("x"), number_field("y")], [
            density_input("x", NO_YES, same), density_input("y", NO_YES, same)], parts=[output, twice])
        _, cells = model.cells({"x": "5", "y": "7"})
        self.assertEqual([1.75, 8, 9, 11, 0.75], [float(cell) for cell in cells])


PAGE = pathlib.Path(__file__).resolve().parents[2] / "docs" / "standard.md"


class StandardPageTest(unittest.TestCase):
    """The example that docs/standard.md computes by both rules, whose commands another test runs."""

    def rows(self):
        """The cells of the table's rows by the row's name: wanted and spam, smoothed and then standard."""
        lines = PAGE.read_text(encoding="utf-8").split("| | smoothed: wanted")[1].split("\n\n")[0].splitlines()[2:]
        return {name.strip(): [cell.strip() for cell in cells] for _, name, *cells, _ in (
            line.split("|") for line in lines)}

    def test_products_and_probabilities_follow_from_the_factors(self):
        rows = self.rows()
        probabilities = [float(cell) for cell in rows.pop("probability")]
        products = [float(cell) for cell in rows.pop("product")]
        self.assertEqual(3, len(rows))
        exact = []
        for column, product in enumerate(products):
            fractions = [cells[column].split("/") for cells in rows.values()]
            exact.append(math.prod(float(f[0]) / (float(f[1]) if f[1:] else 1) for f in fractions))
            self.assertAlmostEqual(exact[-1], product, delta=5.1e-8)
        for column, probability in enumerate(probabilities):
            first = column // 2 * 2
            self.assertAlmostEqual(exact[column] / sum(exact[first:first + 2]), probability, delta=5.1e-5)

    def test_the_table_shows_what_the_document_counts(self):
        model = Model(PAGE.parents[1] / "examples" / "mail" / "mail.pmml")
        answer = model.answer({"sender": "known", "prize": "yes"})
        for shown, probability in zip(self.rows()["probability"][2:], answer.probabilities):
            self.assertAlmostEqual(float(shown), float(probability), delta=5.1e-5)


class CaseFilesTest(unittest.TestCase):
    """The case files of the standard's rule."""

    def test_expected_tables_are_what_the_witness_computes(self):
        folders = [rule.parent for rule in (PAGE.parents[1] / "tests" / "cases").glob("*/rule.txt")]
        self.assertTrue(folders)
        for folder in folders:
            with self.subTest(case=folder.name):
                model, cases = Model(folder / "document.pmml"), read_rows(folder / "rows.csv")
                own = len(cases[0])
                table = [row[own:] for row in read_table((folder / "expected.csv").read_text(encoding="utf-8"))]
                self.assertEqual([], differences(model, cases, table, not model.outputs, 1e-12))


if __name__ == "__main__":
    unittest.main()
