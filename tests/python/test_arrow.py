"""Tables that speak Arrow, and scores that do."""

import gc

import pytest

import command
import nbscore
from arrow_tables import ArrayTable, BrokenStream, Column, StreamTable, read_array, read_arrow

TITANIC = nbscore.load(command.EXAMPLES / "titanic" / "titanic.pmml")
IRIS = nbscore.load(command.EXAMPLES / "iris" / "iris.pmml")
OFFERS = nbscore.load(command.EXAMPLES / "offers" / "offers.pmml")
PEOPLE = {"class": ["first", None, "crew", "third"], "sex": ["female", "male", None, "male"],
          "age": ["adult", "adult", "child", None]}
EXPECTED = TITANIC.score(PEOPLE)


def people(kind="u", offset=0, part=slice(None)):
    return [Column(name, kind, values[part], offset) for name, values in PEOPLE.items()]


@pytest.mark.parametrize("kind", ["u", "U", "cu", "iu", "LU"])
@pytest.mark.parametrize("offset", [0, 1, 9])
def test_an_array_gives_an_array(kind, offset):
    scores = TITANIC.score(ArrayTable(people(kind, offset)))
    assert isinstance(scores, nbscore.ArrowScores) and len(scores) == 4
    assert read_array(scores) == EXPECTED and read_arrow(scores) == EXPECTED
    assert scores.columns == list(EXPECTED) and "4 cases" in repr(scores)


def test_a_stream_gives_a_stream_that_can_be_taken_often():
    chunks = [people(part=slice(0, 1)), people(part=slice(1, 1)), people(part=slice(1, 4))]
    scores = TITANIC.score(StreamTable(chunks))
    assert not hasattr(scores, "__arrow_c_array__")
    assert read_arrow(scores) == EXPECTED and read_arrow(scores) == EXPECTED
    assert TITANIC.predict(StreamTable(chunks)).tolist() == EXPECTED["predicted_survived"]
    assert TITANIC.predict_proba(StreamTable(chunks))[:, 1].tolist() == EXPECTED["probability_yes"]


def test_a_stream_without_chunks_gives_no_scores():
    table = StreamTable([people()])
    table.chunks = [people()]
    empty = StreamTable([people(part=slice(0, 0))])
    assert len(TITANIC.score(empty)) == 0 and len(TITANIC.predict(empty)) == 0
    assert TITANIC.predict_proba(empty).shape == (0, 2)


def test_scores_can_be_scored_no_more_and_outlive_their_table():
    table = ArrayTable(people())
    scores = TITANIC.score(table)
    assert table.keeper.released == 2  # the schema and the array, each as a whole
    del table
    gc.collect()
    assert read_arrow(scores) == EXPECTED


def test_all_that_is_taken_is_released():
    table = StreamTable([people(), people()])
    TITANIC.score(table)
    gc.collect()
    assert table.keeper.released == 4  # the stream, its schema, two arrays
    TITANIC.score(ArrayTable(people())).__arrow_c_stream__()  # a capsule that nobody takes
    TITANIC.score(ArrayTable(people())).__arrow_c_array__()


def test_numbers_truths_and_columns_of_nothing():
    values = {name: [2.0, None, 5.0] for name in IRIS.feature_names_in_}
    expected = IRIS.score(values)
    for kind in ("g", "ig"):
        assert read_arrow(IRIS.score(ArrayTable([Column(name, kind, values[name]) for name in values]))) == expected
    whole = ArrayTable([Column(name, "l", [2, None, 5], 3) for name in values])
    assert read_arrow(IRIS.score(whole)) == expected
    nothing = ArrayTable([Column(name, "n", [None] * 3) for name in values])
    assert read_arrow(IRIS.score(nothing)) == IRIS.score({name: [None] * 3 for name in values})
    truths = ArrayTable([Column(name, "b", [True, None, False]) for name in values])
    assert read_arrow(IRIS.score(truths)) == IRIS.score({name: [1.0, None, 0.0] for name in values})


def test_sets_give_best_scores():
    names = OFFERS.feature_names_in_
    values = {field.name: [None, *(field.categories or field.bins)[:2]] for field in OFFERS.fields if field.needed}
    table = ArrayTable([Column(name, "u" if isinstance(values[name][1], str) else "g", values[name]) for name in names])
    assert read_arrow(OFFERS.best(table, 2)) == OFFERS.best(values, 2)
    assert OFFERS.scores(table).tolist() == OFFERS.scores(values).tolist()


def test_score_stream_scores_each_chunk_when_it_is_asked_for():
    table = StreamTable([people(), people()])
    stream = TITANIC.score_stream(table)
    assert table.given == 0 and stream.columns == list(EXPECTED)
    assert read_arrow(stream) == {name: 2 * values for name, values in EXPECTED.items()}
    with pytest.raises(ValueError, match="taken already"):
        stream.__arrow_c_stream__()
    with pytest.raises(TypeError, match="__arrow_c_stream__"):
        TITANIC.score_stream(PEOPLE)


def test_score_stream_passes_faults_on():
    with pytest.raises(BrokenStream, match="The disk is gone."):
        read_arrow(TITANIC.score_stream(StreamTable([people(), people()], fails_at=1)))
    wrong = [Column("class", "g", [1.5]), Column("sex", "u", ["male"])]
    with pytest.raises(BrokenStream, match='"age"'):
        read_arrow(TITANIC.score_stream(StreamTable([wrong])))


def test_a_stream_that_fails_is_an_os_error():
    with pytest.raises(OSError, match="The disk is gone.") as failed:
        TITANIC.score(StreamTable([people(), people()], fails_at=1))
    assert failed.value.errno == 5


def test_errors_name_the_row_in_the_table_and_not_in_its_chunk():
    names = list(IRIS.feature_names_in_)
    fine = [Column(name, "l", [1, 2, 3]) for name in names]
    wrong = [Column(name, "l", [1, 2**60]) for name in names]
    for call in (IRIS.score, IRIS.predict, IRIS.predict_proba):
        with pytest.raises(nbscore.CaseError, match="row 4 of the table") as refused:
            call(StreamTable([fine, wrong]))
        assert refused.value.row == 4 and refused.value.column == names[0]
    with pytest.raises(nbscore.CaseError) as refused:
        IRIS.score(ArrayTable([Column(name, "u", ["x"]) for name in names]))
    assert refused.value.column == names[0]


def test_capsules_are_taken_once():
    class Again:
        def __init__(self, table):
            self.capsules = table.__arrow_c_array__()

        def __arrow_c_array__(self, requested_schema=None):
            return self.capsules

    again = Again(ArrayTable(people()))
    assert read_arrow(TITANIC.score(again)) == EXPECTED
    with pytest.raises(ValueError, match="taken by someone else"):
        TITANIC.score(again)
