"""What tables may hold, what stands for a missing value, and what errors name."""

import datetime
import decimal

import numpy as np
import pandas as pd
import pytest

import command
import nbscore

# Tells texts apart by a number's digits and a truth value's word, and numbers by bins.
DOCUMENT = """<PMML version="4.4" xmlns="http://www.dmg.org/PMML-4_4"><Header/>
<DataDictionary>
<DataField name="word" optype="categorical" dataType="string"/>
<DataField name="size" optype="continuous" dataType="double"/>
<DataField name="answer" optype="categorical" dataType="string"><Value value="no"/><Value value="yes"/></DataField>
</DataDictionary>
<NaiveBayesModel functionName="classification" threshold="0.001">
<MiningSchema><MiningField name="word"/><MiningField name="size"/>
<MiningField name="answer" usageType="predicted"/></MiningSchema>
<BayesInputs><BayesInput fieldName="word">{counts}</BayesInput>
<BayesInput fieldName="size"><DerivedField name="bin" optype="categorical" dataType="integer"><Discretize field="size">
<DiscretizeBin binValue="0"><Interval closure="openClosed" rightMargin="1.5"/></DiscretizeBin>
<DiscretizeBin binValue="1"><Interval closure="openClosed" leftMargin="1.5"/></DiscretizeBin>
</Discretize></DerivedField>
<PairCounts value="0"><TargetValueCounts><TargetValueCount value="no" count="5"/>
<TargetValueCount value="yes" count="1"/></TargetValueCounts></PairCounts>
<PairCounts value="1"><TargetValueCounts><TargetValueCount value="no" count="2"/>
<TargetValueCount value="yes" count="3"/></TargetValueCounts></PairCounts></BayesInput></BayesInputs>
<BayesOutput fieldName="answer"><TargetValueCounts><TargetValueCount value="no" count="8"/>
<TargetValueCount value="yes" count="11"/></TargetValueCounts></BayesOutput></NaiveBayesModel></PMML>"""
WORDS = ["true", "false", "7", "0.5", "1e+22", "1e-07", "100000", "größe", ""]
COUNTS = "".join(
    f'<PairCounts value="{word}"><TargetValueCounts><TargetValueCount value="no" count="{i + 1}"/>'
    f'<TargetValueCount value="yes" count="{2 * i + 7}"/></TargetValueCounts></PairCounts>'
    for i, word in enumerate(WORDS))


@pytest.fixture(scope="module")
def model():
    return nbscore.load(DOCUMENT.format(counts=COUNTS).encode())


def probabilities(model, word=None, size=None, count=1):
    nothing = [None] * count
    return model.predict_proba({"word": nothing if word is None else word, "size": nothing if size is None else size})


def same(first, second):
    return first.tobytes() == second.tobytes()


@pytest.mark.parametrize("values, words", [
    ([True, False, True], ["true", "false", "true"]),
    (np.array([True, False]), ["true", "false"]),
    (pd.Series([True, False]), ["true", "false"]),
    (pd.Series([True, None, False], dtype="boolean"), ["true", None, "false"]),
    (pd.Series([True, False, True], dtype="category"), ["true", "false", "true"]),
    (np.array([np.True_, np.False_], object), ["true", "false"]),
    ([7, 7.0, np.int8(7), np.float32(7), decimal.Decimal(7)], ["7"] * 5),
    ([0.5, 1e22, 1e-7, 100000, 1e5], ["0.5", "1e+22", "1e-07", "100000", "100000"]),
    (np.array([7, 0], "u1"), ["7", "0"]),
    (np.array([7, 8], ">i4"), ["7", "8"]),
    (np.array([7, np.nan], "f2"), ["7", None]),
    (pd.Series([7, None], dtype="Int16"), ["7", None]),
    (pd.Series([0.5, None], dtype="Float32"), ["0.5", None]),
    (pd.Series([7, 8, 7], dtype="category"), ["7", "8", "7"]),
    (pd.Series([0.5, None, 7], dtype="category"), ["0.5", None, "7"]),
    (pd.Series(["größe", None, "7", pd.NA], dtype="string"), ["größe", None, "7", None]),
    (np.array(["größe", "7"]), ["größe", "7"]),
    (["größe", np.str_("7"), "", float("nan"), pd.NA, pd.NaT, np.datetime64("NaT")],
     ["größe", "7", "", None, None, None, None]),
    (pd.Series([None, None], dtype="category"), [None, None]),
    (pd.Series([pd.NaT, pd.NaT]), [None, None]),
    (pd.Series(["7", "größe"], dtype="category").cat.set_categories(["größe", "x", "7"]), ["7", "größe"]),
    (np.ma.MaskedArray(["7", "8", "größe"], [False, True, False]), ["7", None, "größe"]),
    (pd.Series(["a", "7", "b", "true"], dtype=object)[1::2], ["7", "true"]),
    (pd.arrays.SparseArray([7.0, 0.5, 7.0]), ["7", "0.5", "7"]),
], ids=str)
def test_values_among_texts(model, values, words):
    values = pd.Series(values) if isinstance(values, pd.arrays.SparseArray) else values
    assert same(probabilities(model, word=values, count=len(words)),
                probabilities(model, word=words, count=len(words)))


@pytest.mark.parametrize("values, numbers", [
    ([True, False], [1.0, 0.0]),
    (np.array([True, False]), [1.0, 0.0]),
    (pd.Series([True, False, None], dtype="category"), [1.0, 0.0, None]),
    (pd.Series([True, None], dtype="boolean"), [1.0, None]),
    ([1, 2.5, np.int64(3), np.float32(0.25), None, decimal.Decimal("2.5"), decimal.Decimal("NaN")],
     [1.0, 2.5, 3.0, 0.25, None, 2.5, None]),
    (np.array([1.0, np.nan, 3.0]), [1.0, None, 3.0]),
    (np.array([1.0, np.nan, 3.0], "f4"), [1.0, None, 3.0]),
    (np.array([np.inf, -np.inf]), [float("inf"), float("-inf")]),
    (np.arange(20.0)[::3], [0.0, 3.0, 6.0, 9.0, 12.0, 15.0, 18.0]),
    (np.array([1, 2**53], "i8"), [1.0, 2.0**53]),
    (pd.Series([1, None, 3], dtype="Int64"), [1.0, None, 3.0]),
    (pd.Series([1.0, None, 3.0], dtype="Float64"), [1.0, None, 3.0]),
    (pd.Series([3, 1, None, 3], dtype="category"), [3.0, 1.0, None, 3.0]),
    (pd.Series([2.5, None], dtype="category"), [2.5, None]),
    (pd.Series([pd.NaT]), [None]),
], ids=str)
def test_values_among_numbers(model, values, numbers):
    assert same(probabilities(model, size=values, count=len(numbers)),
                probabilities(model, size=numbers, count=len(numbers)))


def test_missing_values_say_nothing_whatever_stands_for_them(model):
    nothing = probabilities(model, word=[None], size=[None])
    assert not same(nothing, probabilities(model, word=["7"], size=[None]))
    assert not same(nothing, probabilities(model, word=[None], size=[1.0]))
    assert not same(nothing, probabilities(model, word=[""], size=[None]))
    for missing in (float("nan"), pd.NA, pd.NaT, np.nan):
        assert same(nothing, probabilities(model, word=[missing], size=[missing]))


def test_a_nan_among_nullable_numbers_is_missing(model):
    numbers = pd.array([1.0, 0.0, 2.0], "Float64") / pd.array([1.0, 0.0, 1.0], "Float64")
    assert same(probabilities(model, size=pd.Series(numbers), count=3),
                probabilities(model, size=[1.0, None, 2.0], count=3))


def test_many_different_objects_are_told_apart(model):
    chance = np.random.default_rng(5)
    values = [float(number) if number > 0.5 else str(number) for number in chance.uniform(size=5000)] + WORDS
    words = [repr(value) if isinstance(value, float) else value for value in values]
    assert same(probabilities(model, word=values, count=len(values)),
                probabilities(model, word=words, count=len(words)))
    known = [str(word) for word in chance.choice(WORDS, 5000)]
    assert same(probabilities(model, word=np.array(known, object), count=5000),
                probabilities(model, word=pd.Series(known, dtype="category"), count=5000))


@pytest.mark.parametrize("column, values, row", [
    ("size", [1.0, "heavy"], 1),
    ("size", pd.Series(["1", "2"], dtype="category"), None),
    ("size", [1.0, None, 2**53 + 1], 2),
    ("size", np.array([0, 2**60]), 1),
    ("size", pd.Series([0, 2**60], dtype="Int64"), 1),
    ("size", [1.0, b"bytes"], 1),
    ("word", [None, object()], 1),
    ("word", ["a", datetime.date(2020, 1, 1)], 1),
    ("word", pd.Series([pd.NaT, pd.Timestamp(0)]), 1),
    ("word", np.array([0, 1], "m8[s]"), 0),
    ("word", np.array([1j]), None),
    ("word", ["fine", "\ud800"], 1),
    ("word", np.array([["a", "b"]]), None),
    ("word", pd.Series(pd.interval_range(0, 2)), 0),
])
def test_errors_name_the_column_and_the_row(model, column, values, row):
    table = {name: [None] * len(values) for name in ("word", "size")}
    table[column] = values
    with pytest.raises(nbscore.CaseError) as refused:
        model.score(table)
    error = refused.value
    assert (error.column, error.row) == (column, row)
    assert f'"{column}"' in str(error)
    assert isinstance(error, ValueError)


def test_columns_that_lack_are_an_error_unless_that_is_allowed(model):
    with pytest.raises(nbscore.CaseError, match='"size"') as refused:
        model.predict(pd.DataFrame({"word": ["7"]}))
    assert refused.value.column == "size"
    with pytest.raises(nbscore.CaseError, match='"word", "size"|"size", "word"'):
        model.predict(pd.DataFrame({"other": ["7"]}))
    lacking = model.predict_proba(pd.DataFrame({"word": ["7"]}), allow_missing_fields=True)
    assert same(lacking, probabilities(model, word=["7"]))


def test_columns_must_be_of_one_length(model):
    with pytest.raises(nbscore.CaseError, match="2 values for 1 cases"):
        model.predict({"word": ["a"], "size": [1.0, 2.0]})


def test_other_things_are_no_tables(model):
    for wrong in (5, [1, 2], None, "text"):
        with pytest.raises(TypeError, match="X must be a DataFrame"):
            model.predict(wrong)


def test_tables_may_be_empty(model):
    empty = pd.DataFrame({"word": pd.Series([], dtype=object), "size": pd.Series([], dtype=float)})
    for table in (empty, empty.astype({"word": "category"}), {"word": [], "size": []}):
        assert model.predict(table).shape == (0,)
        assert model.predict_proba(table).shape == (0, 2)
        assert all(len(column) == 0 for column in dict(model.score(table)).values())


def test_scores_come_as_the_kind_of_table_that_went_in(model):
    names = ["predicted_answer", "confidence", "probability_no", "probability_yes"]
    frame = pd.DataFrame({"word": ["7", "true"], "size": [1.0, 2.0], "other": [1, 2]}, index=["a", "b"])
    scores = model.score(frame)
    assert list(scores) == names and scores.index.tolist() == ["a", "b"]
    assert scores.dtypes.astype(str).tolist() == ["category", "float64", "float64", "float64"]
    assert frame.join(scores).shape == (2, 7)
    arrays = model.score({name: frame[name].to_numpy() for name in frame})
    assert list(arrays) == names and all(isinstance(column, np.ndarray) for column in arrays.values())
    lists = model.score({name: frame[name].tolist() for name in frame})
    assert list(lists) == names and all(isinstance(column, list) for column in lists.values())
    assert list(model.score(frame, prediction_only=True)) == names[:1]
    assert list(model.score(dict(frame), prediction_only=True)) == names[:1]
    with pytest.raises(ValueError, match="'output' or 'usual'"):
        model.score(frame, columns="all")


def test_numeric_targets_are_predicted_as_numbers():
    text = DOCUMENT.format(counts=COUNTS).replace('name="answer" optype="categorical" dataType="string"',
                                                  'name="answer" optype="categorical" dataType="double"')
    model = nbscore.load(text.replace('"no"', '"1.5"').replace('"yes"', '"2"').encode())
    table = {"word": np.array(["7", ""], object), "size": np.array([1.0, 2.0])}
    assert model.classes_.tolist() == [1.5, 2.0] and model.predict(table).dtype == np.float64
    assert model.score(pd.DataFrame(table))["predicted_answer"].dtype == np.float64
    assert model.score_case({"word": "7", "size": 1.0})["predicted_answer"] in (1.5, 2.0)
    assert set(model.score(table)["predicted_answer"]) <= {1.5, 2.0}


def test_cases_without_a_result_have_neither_prediction_nor_probabilities():
    folder = command.CASES / "standard-cases-without-a-result"
    model = nbscore.load(folder / "document.pmml", rule="standard")
    table = pd.read_csv(folder / "rows.csv")
    predicted = model.predict(table).tolist()
    assert None in predicted and any(name is not None for name in predicted)
    shown = model.predict_proba(table)
    assert np.isnan(shown[predicted.index(None)]).any()
    usual = model.score(table, columns="usual")
    assert usual.iloc[:, 0].isna().tolist() == [name is None for name in predicted]
    assert list(model.score(table)) == ["Predicted_kind", "Probability_letter"]


def test_a_frame_that_speaks_arrow_is_answered_with_a_frame(model):
    class NewerFrame(pd.DataFrame):
        def __arrow_c_stream__(self, requested_schema=None):
            raise AssertionError("asked for Arrow")

    frame = pd.DataFrame({"word": ["true", "7"], "size": [1.0, 2.0]}, index=["a", "b"])
    scored = model.score(NewerFrame(frame))
    assert list(scored.index) == ["a", "b"] and scored.equals(model.score(frame))
