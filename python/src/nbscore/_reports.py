"""What is known of a document without scoring tables with it."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any, NamedTuple

from nbscore import _engine
from nbscore._documents import read

if TYPE_CHECKING:
    from typing import Literal

    from nbscore._documents import Densities, Document, Rule


class Problem(NamedTuple):
    """Something that the owner of a document should know.

    severity: "error", "warning" or "remark". code: the number of a refusal; None for the others. advice: what to do
    about it. line, column, path: where it stands; None where that is not known.
    """

    severity: Literal["error", "warning", "remark"]
    code: int | None
    message: str
    advice: str
    line: int | None
    column: int | None
    path: str | None


class Check(NamedTuple):
    """What a document holds and what is wrong with it.

    sound: there are neither errors nor warnings. can_be_scored: there are no errors. problems: all that is known,
    errors first. details: all of it, as ``nbscore check --format json`` has it.
    """

    document: str
    sound: bool
    can_be_scored: bool
    problems: tuple[Problem, ...]
    details: dict[str, Any]

    def __bool__(self) -> bool:
        return self.sound


class Difference(NamedTuple):
    """An expected value that scoring does not give.

    row: the number of the test case, from 1. field: what was expected. line, column: where it stands.
    sub_model: whose test case it is; None of a single classifier.
    """

    row: int
    field: str
    expected: str | float | None
    actual: str | float | None
    line: int
    column: int
    sub_model: str | None


class Verification(NamedTuple):
    """How a document's own test cases came out.

    rows: how many there are. cells: how many expected values were compared. differences: those that are not met.
    """

    document: str
    rows: int
    cells: int
    differences: tuple[Difference, ...]

    @property
    def passed(self) -> bool:
        """Whether nothing differs, also where there was nothing to compare."""
        return not self.differences

    def __bool__(self) -> bool:
        return self.passed


def check(document: Document, *, rule: Rule = "smoothed", adapt: bool = False, max_memory: int | None = None,
          max_document_bytes: int | None = None) -> Check:
    """Tells what a document holds and all that is wrong with it. One that is refused is no error here; a file that
    cannot be read is an OSError. The arguments are those of ``load``."""
    import json

    text = _engine.Model.check(*read(document, rule, adapt, "threshold", max_memory, max_document_bytes))
    details = json.loads(text)["documents"][0]
    problems = tuple(Problem(*(problem[name] for name in Problem._fields)) for problem in details["problems"])
    return Check(details["document"], details["sound"], details["can_be_scored"], problems, details)


def verify(document: Document, *, rule: Rule = "smoothed", adapt: bool = False, densities: Densities = "threshold",
           max_memory: int | None = None, max_document_bytes: int | None = None) -> Verification:
    """Scores the test cases that a document carries and compares. The arguments and errors are those of ``load``."""
    import json

    told = json.loads(_engine.Model.verify(*read(document, rule, adapt, densities, max_memory, max_document_bytes)))
    differences = tuple(Difference(one["row"], one["field"], one["expected"], one["actual"], one["line"], one["column"],
                                   one.get("model")) for one in told["differences"])
    return Verification(told["document"], told["rows"], told["cells"], differences)
