"""Tables that speak Arrow: how they come, and how their scores go."""

from __future__ import annotations

from typing import TYPE_CHECKING

from nbscore import _engine
from nbscore._errors import CaseError

if TYPE_CHECKING:
    from collections.abc import Iterator
    from typing import Any


class ArrowScores:
    """Scores of a table that spoke Arrow. Whatever takes Arrow takes these, as often as it wants:
    ``polars.DataFrame(scores)``, ``pyarrow.table(scores)``.

    columns: the names, in order. ``len(scores)``: how many cases. Texts are utf8, numbers float64.
    """

    def __init__(self, scores: _engine.Scores, columns: list[str]) -> None:
        self._scores = scores
        self.columns = columns

    def __len__(self) -> int:
        return len(self._scores)

    def __repr__(self) -> str:
        return f"<nbscore.ArrowScores of {len(self)} cases: {', '.join(self.columns)}>"

    def __arrow_c_stream__(self, requested_schema: object = None) -> object:
        return self._scores.stream()


class _ArrowArrayScores(ArrowScores):
    """Scores of a single array, which can be taken as one."""

    def __arrow_c_array__(self, requested_schema: object = None) -> tuple[object, object]:
        return self._scores.array()


class ArrowScoreStream:
    """Scores of a stream of cases. Each array is scored when its scores are asked for, and nothing is kept: so tables
    that do not fit into memory go through. It can be taken once."""

    def __init__(self, capsule: object, columns: list[str]) -> None:
        self._capsule: object | None = capsule
        self.columns = columns

    def __arrow_c_stream__(self, requested_schema: object = None) -> object:
        capsule, self._capsule = self._capsule, None
        if capsule is None:
            raise ValueError("The stream of scores was taken already.")
        return capsule


def speaks_arrow(table: object) -> bool:
    """Frames of newer versions of pandas do, too, but are answered with frames and keep their index."""
    if hasattr(table, "iloc"):
        return False
    return hasattr(table, "__arrow_c_stream__") or hasattr(table, "__arrow_c_array__")


def has_one_array(table: object) -> bool:
    return hasattr(table, "__arrow_c_array__") and not hasattr(table, "__arrow_c_stream__")


def read_parts(table: Any) -> Iterator[_engine.Cases]:
    """The arrays of a table, one after the other; a CaseError about one tells its row in the table."""
    if has_one_array(table):
        yield _engine.Cases.of_arrow(*table.__arrow_c_array__())
        return
    yield from _engine.CaseStream.of_arrow(table.__arrow_c_stream__())


def make_scores(table: object, scores: _engine.Scores, columns: list[str]) -> ArrowScores:
    return (_ArrowArrayScores if has_one_array(table) else ArrowScores)(scores, columns)


class Rows:
    """Counts the rows of parts that were scored, so that an error in a later one tells the row in the table."""

    def __init__(self, parts: Iterator[_engine.Cases]) -> None:
        self.parts = parts
        self.before = 0
        self.current = 0

    def __iter__(self) -> Iterator[_engine.Cases]:
        for part in self.parts:
            self.before += self.current
            self.current = len(part)
            yield part

    def __enter__(self) -> Rows:
        return self

    def __exit__(self, kind: object, error: BaseException | None, trace: object) -> None:
        if isinstance(error, CaseError) and self.before > 0 and error.row is not None:
            raise error._in_part(self.before) from None
