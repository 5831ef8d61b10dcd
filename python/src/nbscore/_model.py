"""Models."""

from __future__ import annotations

from functools import cached_property
from typing import TYPE_CHECKING, Any, NamedTuple

from nbscore import _engine
from nbscore._arrow import ArrowScores, ArrowScoreStream, Rows, make_scores, read_parts, speaks_arrow
from nbscore._documents import read
from nbscore._errors import CaseError

if TYPE_CHECKING:
    from collections.abc import Mapping
    from typing import Literal

    import numpy as np
    import numpy.typing as npt

    from nbscore._documents import Densities, Document, Reading, Rule


class Field(NamedTuple):
    """A field of a model.

    name: its name. values: "numbers" or "texts". role: "input", "target" or "none".
    categories: what inputs tell apart in it, numbers or texts; None where nothing is told apart by value.
    bins: the cutpoints between its bins; None where there are none. Of a set of sub-models categories are those of all
    together, and cutpoints those of the first that has bins.
    continuous: whether its numbers are a measure. derived: whether the document computes it from other fields.
    read: whether a table's column of its name is used. needed: whether a table must have it.
    """

    name: str
    values: Literal["numbers", "texts"]
    role: Literal["input", "target", "none"]
    categories: tuple[str, ...] | tuple[float, ...] | None
    bins: tuple[float, ...] | None
    continuous: bool
    derived: bool
    read: bool
    needed: bool


def load(document: Document, *, rule: Rule = "smoothed", adapt: bool = False, densities: Densities = "threshold",
         max_memory: int | None = None, max_document_bytes: int | None = None) -> Model:
    """Reads a model.

    document: a path, the bytes of a document, or an open file.
    rule: "smoothed", the engine's own, or "standard", that of the PMML standard.
    adapt: rewrite what newer producers write into what is read here first.
    densities: by the standard's rule, "threshold" raises densities below the threshold, "plain" only those that are 0.
    max_memory, max_document_bytes: bytes that reading may take and that the document may have.

    Raises DocumentError for a document that cannot be scored, and OSError for a file that cannot be read.
    """
    return Model(read(document, rule, adapt, densities, max_memory, max_document_bytes))


class Model:
    """A model, made by ``load``. It never changes: any number of threads may use one, and while one scores, the others
    run. It pickles as its document, and a copy is the model itself.

    Tables X are pandas DataFrames, dicts of NumPy arrays or lists, or anything with ``__arrow_c_stream__`` or
    ``__arrow_c_array__``; n is their number of rows. Columns are found by name; others are passed over. NaN, None, NaT
    and ``pd.NA`` are missing values: an input without a value says nothing about its case. A column that the model
    needs and X lacks is a CaseError, unless allow_missing_fields: then its values are missing.
    """

    def __init__(self, reading: Reading) -> None:
        self._reading = reading
        self._engine = _engine.Model(*reading)

    # What it holds

    @cached_property
    def _content(self) -> dict[str, Any]:
        import json

        content: dict[str, Any] = json.loads(self._engine.content())
        return content

    @cached_property
    def fields(self) -> tuple[Field, ...]:
        """The fields of the document, in its order, then derived ones."""

        def make(told: dict[str, Any]) -> Field:
            lists: dict[str, Any] = {name: None if told[name] is None else tuple(told[name])
                                     for name in ("categories", "bins")}
            return Field(**{**told, **lists})

        return tuple(make(told) for told in self._content["fields"])

    @cached_property
    def _read_fields(self) -> dict[str, Field]:
        return {field.name: field for field in self.fields if field.read}

    @property
    def is_set(self) -> bool:
        """Whether the model is a set of sub-models: then it has scores and best, else predict and predict_proba."""
        return self._content["sub_models"] is not None

    @property
    def sub_models(self) -> tuple[str, ...]:
        """Of a set the label of each sub-model, in the order of scores; none of a single classifier."""
        return tuple(self._content["sub_models"] or ())

    @property
    def rule(self) -> Rule:
        return "standard" if self._reading[2] else "smoothed"

    @cached_property
    def classes_(self) -> npt.NDArray[Any]:
        """The target's categories, in the order of predict_proba's columns: texts as objects, or numbers."""
        import numpy as np

        self._require_classifier()
        classes = self._content["classes"]
        if self._content["target_values"] == "numbers":
            return np.array([float(name) for name in classes], np.float64)
        array = np.empty(len(classes), object)
        array[:] = classes
        return array

    @cached_property
    def feature_names_in_(self) -> npt.NDArray[Any]:
        """The names of the columns that tables must have."""
        import numpy as np

        names = [field.name for field in self._read_fields.values() if field.needed]
        array = np.empty(len(names), object)
        array[:] = names
        return array

    @property
    def n_features_in_(self) -> int:
        """How many columns tables must have."""
        return len(self.feature_names_in_)

    def describe(self) -> dict[str, Any]:
        """What ``nbscore check --format json`` tells of the model: its kind, fields, inputs, and remarks on it."""
        import json

        described: dict[str, Any] = json.loads(self._engine.describe())["documents"][0]
        return described

    def __str__(self) -> str:
        """The model as text for people, as ``nbscore display`` writes it."""
        return self._engine.display()

    def __repr__(self) -> str:
        if self.is_set:
            return f"<nbscore.Model {self._reading[1]!r}: a set of {len(self.sub_models)} sub-models>"
        return f"<nbscore.Model {self._reading[1]!r}: predicts {self._content['target']!r}>"

    def _repr_html_(self) -> str:
        from nbscore._html import write_html

        return write_html(self)

    # Copies

    def __reduce__(self) -> tuple[type[Model], tuple[Reading]]:
        return (Model, (self._reading,))

    def __copy__(self) -> Model:
        return self

    def __deepcopy__(self, memo: dict[int, object]) -> Model:
        return self

    # Tables

    def score(self, X: Any, *, columns: Literal["output", "usual"] = "output", prediction_only: bool = False,
              allow_missing_fields: bool = False) -> Any:
        """The columns that the command adds to a table, as the kind of table that came in.

        Of a DataFrame a DataFrame with its index; predictions are categorical. Of a dict of arrays a dict of arrays, of
        a dict of lists a dict of lists; of Arrow an ArrowScores. Of a single classifier these are
        ``predicted_<target>``, ``confidence`` and ``probability_<category>`` for each category, of a set
        ``score_<sub-model>`` for each sub-model.

        columns: by the standard's rule "output" gives the columns that the document asks for, if it does; "usual" the
        usual ones. prediction_only: the prediction alone.
        """
        if columns not in ("output", "usual"):
            raise ValueError(f"columns is {columns!r}, and must be 'output' or 'usual'.")
        options = (columns == "usual", prediction_only, allow_missing_fields, 0)
        asks_for_own = self._content["output"] and columns == "output"
        if speaks_arrow(X) or asks_for_own:
            return self._score_by_arrow(X, options)
        from nbscore._tables import holds_lists, make_usual_scores

        return self._score_by_arrow(X, options) if holds_lists(X) else make_usual_scores(X, self, options)

    def _score_by_arrow(self, X: Any, options: _engine.Options) -> Any:
        names = self._engine.columns(options)
        if speaks_arrow(X):
            with Rows(read_parts(X)) as parts:
                return make_scores(X, self._engine.score(parts, options), [name for name, _ in names])
        from nbscore._tables import make_table

        scores = self._engine.score([self._read(X)], options)
        return make_table(X, scores, names)

    def score_stream(self, X: Any, *, columns: Literal["output", "usual"] = "output", prediction_only: bool = False,
                     allow_missing_fields: bool = False, best: int | None = None) -> ArrowScoreStream:
        """Scores a stream of cases as it is asked for, array by array: for tables larger than memory.

        X: anything with ``__arrow_c_stream__``. Errors in cases come from whoever reads the stream. best: of a set,
        only so many of the highest scores of each case.
        """
        if not hasattr(X, "__arrow_c_stream__"):
            raise TypeError("X must have __arrow_c_stream__.")
        options = (columns == "usual", prediction_only, allow_missing_fields, best or 0)
        names = [name for name, _ in self._engine.columns(options)]
        return ArrowScoreStream(self._engine.stream(X.__arrow_c_stream__(), options), names)

    def predict(self, X: Any, *, allow_missing_fields: bool = False) -> npt.NDArray[Any]:
        """The predicted category of each case: an array of shape (n,), of texts or numbers as classes_. By the
        standard's rule a case may have none: None among texts, NaN among numbers."""
        import numpy as np

        self._require_classifier()
        parts = []
        with Rows(self._read_all(X)) as cases:
            for part in cases:
                parts.append(np.empty(len(part), np.int32))
                self._engine.answer(part, allow_missing_fields, parts[-1], None, None, 0, False)
        return self._name_classes(parts[0] if len(parts) == 1 else np.concatenate([np.empty(0, np.int32), *parts]))

    def predict_proba(self, X: Any, *, allow_missing_fields: bool = False) -> npt.NDArray[np.float64]:
        """The probability of each category: an array of shape (n, len(classes_)). NaN where a case has none."""
        self._require_classifier()
        return self._number_answers(X, len(self.classes_), allow_missing_fields)

    def scores(self, X: Any, *, allow_missing_fields: bool = False) -> npt.NDArray[np.float64]:
        """Of a set the score of each sub-model: an array of shape (n, len(sub_models))."""
        self._require_set()
        return self._number_answers(X, len(self.sub_models), allow_missing_fields)

    def best(self, X: Any, n: int = 1, *, allow_missing_fields: bool = False) -> Any:
        """Of a set the n highest scores of each case, the highest first: columns ``best_1_model``, ``best_1_score``,
        ``best_2_model`` and so on, as the kind of table that came in."""
        self._require_set()
        if n < 1:
            raise ValueError(f"n is {n}, and must be at least 1.")
        return self._score_by_arrow(X, (False, False, allow_missing_fields, n))

    # Single cases

    def score_case(self, case: Mapping[str, Any], *, allow_missing_fields: bool = False) -> dict[str, Any]:
        """The columns that the command adds, for one case: a dict of texts and numbers, None where there is none.

        case: a dict with a value for each field that the model needs; other keys are passed over. By the standard's
        rule with the columns that the document asks for, if it does.
        """
        if self._content["output"]:
            table = {name: [value] for name, value in case.items()}
            scores = self.score(table, allow_missing_fields=allow_missing_fields)
            return {name: values[0] for name, values in scores.items()}
        return self._case.score_dict(case, allow_missing_fields)

    @cached_property
    def _case(self) -> _engine.Row:
        return self._make_row(list(self._read_fields))

    def prepare(self, *names: str) -> PreparedCase:
        """A case to be scored again and again by the values of these fields, faster than score_case. Fields that are
        not named are missing."""
        return PreparedCase(self, names)

    def _make_row(self, names: list[str]) -> _engine.Row:
        fields = []
        for name in names:
            field = self._read_fields.get(name)
            if field is None:
                raise CaseError(f'The model reads no field "{name}".', name)
            fields.append((name, field.values == "numbers", field.needed))
        columns = [name for name, _ in self._engine.columns((True, False, False, 0))]
        classes = None if self.is_set else self.classes_.tolist()
        return _engine.Row(self._engine, fields, columns, classes)

    # Parts

    def _require_classifier(self) -> None:
        if self.is_set:
            raise TypeError("The model is a set of sub-models, which predicts nothing: use scores or best.")

    def _require_set(self) -> None:
        if not self.is_set:
            raise TypeError("The model is a single classifier: use predict, predict_proba or score.")

    def _read(self, X: Any) -> _engine.Cases:
        from nbscore._columns import read_table

        if not hasattr(X, "keys"):
            raise TypeError("X must be a DataFrame, a dict of columns, or have __arrow_c_stream__ or "
                            f"__arrow_c_array__; its type is {type(X).__name__}.")
        return read_table(X, self._read_fields, self.rule == "standard")

    def _read_all(self, X: Any) -> Any:
        return read_parts(X) if speaks_arrow(X) else iter([self._read(X)])

    def _number_answers(self, X: Any, width: int, allow_missing_fields: bool) -> npt.NDArray[np.float64]:
        import numpy as np

        parts = []
        with Rows(self._read_all(X)) as cases:
            for part in cases:
                parts.append(np.empty((len(part), width)))
                self._engine.answer(part, allow_missing_fields, None, None, parts[-1], width, False)
        return parts[0] if len(parts) == 1 else np.concatenate([np.empty((0, width)), *parts])

    def _name_classes(self, codes: npt.NDArray[np.int32]) -> npt.NDArray[Any]:
        """-1 stands for none."""
        import numpy as np

        none: Any = np.nan if self.classes_.dtype == np.float64 else None
        return np.append(self.classes_, none).take(codes)


class PreparedCase:
    """A case that is scored by the values of some fields, again and again. Made by ``Model.prepare``.

    fields: the names of the fields, in the order of the values. columns: what score gives, in order.
    """

    def __init__(self, model: Model, names: tuple[str, ...]) -> None:
        self._row = model._make_row(list(names))
        self.fields = names
        self.columns = self._row.columns
        #: ``score(*values)``: a tuple with a value for each of columns, None where there is none. Of a document with
        #: columns of its own, the usual ones.
        self.score = self._row.score
