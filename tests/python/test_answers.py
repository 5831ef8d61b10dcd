"""Whatever kind of table comes, the scores are the command's, to the last bit."""

import math
import random
import struct

import numpy as np
import pandas as pd
import pytest

import command
import nbscore
from arrow_tables import ArrayTable, Column, StreamTable, read_array, read_arrow


def bits_of(number):
    return struct.pack("<d", number)


def is_number(text):
    try:
        return math.isfinite(float(text)) and "_" not in text
    except ValueError:
        return False


def expect_same(expected, actual, context):
    """expected: cells of the command's; actual: texts, numbers, or None and NaN for an empty cell."""
    assert list(expected) == list(actual), context
    for name, cells in expected.items():
        assert len(cells) == len(actual[name]), context
        for row, (cell, value) in enumerate(zip(cells, actual[name])):
            where = (*context, name, row, cell, value)
            if value is None or (value != value and cell == ""):
                assert cell == "", where
            elif value != value:
                assert cell == "nan", where
            elif isinstance(value, str):
                assert cell == value, where
            else:
                assert cell != "" and bits_of(float(cell)) == bits_of(value), where


def columns_of(frame):
    return {name: frame[name].astype(object).tolist() for name in frame}


class Table:
    """Cells of a table as a model's fields take them, in every kind of column."""

    def __init__(self, model, cells):
        self.model = model
        self.fields = {field.name: field for field in model.fields if field.read and field.name in cells}
        self.values = {name: [self.value_of(field, cell) for cell in cells[name]]
                       for name, field in self.fields.items()}
        self.cells = cells
        self.size = len(next(iter(cells.values()))) if cells else 0

    def value_of(self, field, cell):
        if cell == "":
            return None
        if field.values == "numbers" and is_number(cell):
            return float(cell)
        # The engine's own rule knows no texts among numbers but, in tables, those that stand for missing values.
        return None if field.values == "numbers" and self.model.rule == "smoothed" else cell

    def texts_of(self, name):
        """A column of texts holds numbers as they are written."""
        return [None if value is None else cell for value, cell in zip(self.values[name], self.cells[name])]

    def holds_numbers(self, name):
        return self.fields[name].values == "numbers" and not any(isinstance(v, str) for v in self.values[name])

    def frame(self, change=None):
        index = pd.RangeIndex(100, 100 + self.size)
        columns = {}
        for name, values in self.values.items():
            column = pd.Series(values, index=index, dtype=object)
            columns[name] = column if change is None else change(name, column)
        return pd.DataFrame(columns, index=index)

    def as_strings(self, name, column):
        if self.holds_numbers(name):
            return column.astype(float)
        return pd.Series(self.texts_of(name), index=column.index, dtype="string")

    def as_nullable(self, name, column):
        if not self.holds_numbers(name):
            return pd.Series(self.texts_of(name), index=column.index, dtype="string")
        whole = all(value is None or value.is_integer() for value in self.values[name])
        numbers = [pd.NA if value is None else int(value) if whole else value for value in self.values[name]]
        return pd.Series(pd.array(numbers, "Int64" if whole else "Float64"), index=column.index)

    def arrow_columns(self, texts, numbers, part=slice(None), offset=0):
        return [Column(name, numbers, values[part], offset) if self.holds_numbers(name) else
                Column(name, texts, self.texts_of(name)[part], offset) for name, values in self.values.items()]

    def kinds(self):
        """(name of the kind, the table)"""
        yield "lists", self.values
        yield "arrays", {name: np.array(values, object) for name, values in self.values.items()}
        yield "objects", self.frame()
        yield "strings and floats", self.frame(self.as_strings)
        yield "nullable", self.frame(self.as_nullable)
        yield "categorical", self.frame(lambda _, column: column.astype("category"))
        yield "Arrow array", ArrayTable(self.arrow_columns("u", "g"))
        yield "Arrow array with an offset", ArrayTable(self.arrow_columns("U", "g", offset=3))
        half = self.size // 2
        yield "Arrow dictionaries in chunks", StreamTable(
            [self.arrow_columns("cu", "ig", part) for part in (slice(0, half), slice(half, half), slice(half, None))])


def read_scores(scores):
    if isinstance(scores, pd.DataFrame):
        return columns_of(scores)
    if isinstance(scores, nbscore.ArrowScores):
        return read_arrow(scores)
    return {name: list(values) for name, values in scores.items()}


def expect_all_kinds(model, cells, expected, context):
    table = Table(model, cells)
    for kind, given in table.kinds():
        scores = model.score(given)
        expect_same(expected, read_scores(scores), (*context, kind))
        if isinstance(scores, pd.DataFrame):
            assert scores.index.equals(given.index)
        if hasattr(scores, "__arrow_c_array__"):
            expect_same(expected, read_array(scores), (*context, kind, "array"))
    expect_single_cases(model, table, expected, context)


def expect_single_cases(model, table, expected, context):
    for row in range(min(table.size, 20)):
        scores = model.score_case({name: values[row] for name, values in table.values.items()})
        expect_same({name: cells[row:row + 1] for name, cells in expected.items()},
                    {name: [value] for name, value in scores.items()}, (*context, "case", row))


CASE_FILES = sorted(folder for folder in command.CASES.iterdir() if (folder / "document.pmml").exists())


@pytest.mark.parametrize("folder", [f for f in CASE_FILES if (f / "expected.csv").exists()], ids=lambda f: f.name)
def test_scores_are_the_commands_for_case_files(folder):
    rule = "standard" if (folder / "rule.txt").exists() else "smoothed"
    model = nbscore.load(folder / "document.pmml", rule=rule)
    cells = command.read_table(folder / "rows.csv")
    expected = command.score(folder / "document.pmml", folder / "rows.csv", "--rule", rule)
    expect_all_kinds(model, cells, expected, (folder.name,))


def read_refusal(folder):
    pairs = (line.split(" ", 1) for line in (folder / "expected-refusal.txt").read_text("utf-8").splitlines() if line)
    return {key.strip(): value.strip() for key, value in pairs}


REFUSED = [f for f in CASE_FILES if (f / "expected-refusal.txt").exists() and "error" in read_refusal(f)]


@pytest.mark.parametrize("folder", REFUSED, ids=lambda f: f.name)
def test_documents_of_case_files_are_refused_as_the_command_does(folder):
    expected = read_refusal(folder)
    rule = "standard" if (folder / "rule.txt").exists() else "smoothed"
    with pytest.raises(nbscore.DocumentError) as refused:
        nbscore.load(folder / "document.pmml", rule=rule)
    error = refused.value
    assert error.code == int(expected["error"])
    assert error.file == str(folder / "document.pmml")
    for key, actual in (("message", error.message), ("line", error.line), ("column", error.column),
                        ("path", error.path)):
        if key in expected:
            assert str(actual) == expected[key]


def draw_value(field, chance):
    kind = chance.random()
    if kind < 0.15:
        return ""
    if field.values == "texts":
        return chance.choice([*(field.categories or ()), "something else", "7", "größer, \"als\""])
    near = [*(field.bins or ()), *(field.categories or ()), 0.0]
    number = chance.choice(near) + chance.choice([0.0, 0.0, 1.0, -0.5, chance.uniform(-10, 10)])
    return repr(number)


@pytest.mark.parametrize("seed", range(12))
@pytest.mark.parametrize("name", ["titanic/titanic", "iris/iris", "offers/offers", "mail/mail"])
def test_scores_are_the_commands_for_random_tables(name, seed, tmp_path):
    chance = random.Random(f"{name} {seed}")
    document = command.EXAMPLES / f"{name}.pmml"
    model = nbscore.load(document)
    read = [field for field in model.fields if field.read]
    chance.shuffle(read)
    size = chance.choice([1, 2, 7, 60])
    cells = {field.name: [draw_value(field, chance) for _ in range(size)] for field in read}
    # A row of nothing but empty cells in one column would be an empty line.
    cells["row"] = [str(i) for i in range(size)]
    command.write_table(tmp_path / "rows.csv", cells)
    expected = command.score(document, tmp_path / "rows.csv")
    expect_all_kinds(model, cells, expected, (name, seed))


@pytest.mark.parametrize("seed", range(4))
def test_best_scores_are_the_commands(seed, tmp_path):
    chance = random.Random(seed)
    document = command.EXAMPLES / "offers" / "offers.pmml"
    model = nbscore.load(document)
    cells = {field.name: [draw_value(field, chance) for _ in range(30)] for field in model.fields if field.read}
    cells["row"] = [str(i) for i in range(30)]
    command.write_table(tmp_path / "rows.csv", cells)
    count = seed + 1
    expected = command.score(document, tmp_path / "rows.csv", "--best", count)
    for kind, table in Table(model, cells).kinds():
        expect_same(expected, read_scores(model.best(table, count)), (kind,))
    all_scores = command.score(document, tmp_path / "rows.csv")
    matrix = model.scores(Table(model, cells).frame())
    expect_same(all_scores, dict(zip(all_scores, matrix.T)), ("scores",))


@pytest.mark.parametrize("name", ["titanic/titanic", "iris/iris"])
def test_predictions_and_probabilities_are_those_of_scores(name):
    model = nbscore.load(command.EXAMPLES / f"{name}.pmml")
    chance = random.Random(name)
    cells = {field.name: [draw_value(field, chance) for _ in range(50)] for field in model.fields if field.read}
    for kind, table in Table(model, cells).kinds():
        scores = list(read_scores(model.score(table)).values())
        assert model.predict(table).tolist() == scores[0], kind
        expected = np.array(scores[2:]).T
        assert model.predict_proba(table).tobytes() == np.ascontiguousarray(expected).tobytes(), kind
