"""Scores as the kind of table that the cases came in."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any

import numpy as np

if TYPE_CHECKING:
    from nbscore import _engine
    from nbscore._model import Model


def _is_frame(table: Any) -> bool:
    return hasattr(table, "columns")


def holds_lists(table: Any) -> bool:
    return (not _is_frame(table) and len(table) > 0
            and all(isinstance(table[name], (list, tuple)) for name in table.keys()))


def make_usual_scores(table: Any, model: Model, options: _engine.Options) -> Any:
    """The usual columns, written by the engine where they stay."""
    names = [name for name, _ in model._engine.columns(options)]
    cases = model._read(table)
    count = len(cases)
    if model.is_set:
        numbers = np.empty((len(names), count))
        model._engine.answer(cases, options[2], None, None, numbers, len(names), True)
        return _join(table, names, None, numbers)
    codes = np.empty(count, np.int32)
    numbers = np.empty((len(names) - 1, count))
    confidence, probabilities = (numbers[0], numbers[1:]) if len(numbers) else (None, None)
    model._engine.answer(cases, options[2], codes, confidence, probabilities, max(len(names) - 2, 0), True)
    return _join(table, names, (model, codes), numbers)


def _join(table: Any, names: list[str], predicted: tuple[Model, Any] | None, numbers: Any) -> Any:
    """A column of predictions, if any, and then those of numbers, which lie in the rows of a matrix."""
    if not _is_frame(table):
        columns = dict(zip(names[-len(numbers):], numbers)) if len(numbers) else {}
        if predicted is not None:
            model, codes = predicted
            columns = {names[0]: model._name_classes(codes), **columns}
        return columns
    import pandas

    # The frame lies in the matrix: nothing is copied.
    frame = pandas.DataFrame(numbers.T, index=table.index, columns=names[-len(numbers):] if len(numbers) else [],
                             copy=False)
    if predicted is not None:
        model, codes = predicted
        if model.classes_.dtype == object:
            # As narrow as pandas wants them, which then looks at them and copies nothing.
            narrow = codes.astype(np.int8) if len(model.classes_) < 128 else codes
            frame.insert(0, names[0], pandas.Categorical.from_codes(narrow, model.classes_))
        else:
            frame.insert(0, names[0], model._name_classes(codes))
    return frame


def make_table(table: Any, scores: _engine.Scores, names: list[tuple[str, bool]]) -> Any:
    """Columns of any kind; texts become objects."""
    if holds_lists(table):
        return {name: scores.list(position) for position, (name, _) in enumerate(names)}
    columns: dict[str, Any] = {}
    for position, (name, is_text) in enumerate(names):
        column = scores.column(position)
        if is_text:
            columns[name] = np.empty(len(column), object)
            columns[name][:] = column
        else:
            columns[name] = np.frombuffer(column, np.float64)
    if _is_frame(table):
        import pandas

        return pandas.DataFrame(columns, index=table.index, columns=[name for name, _ in names])
    return columns
