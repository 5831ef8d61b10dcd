"""Scores cases with Naive Bayes models written in PMML.

    model = nbscore.load("model.pmml")
    model.score(frame)                          # the command's columns, as the kind of table that came in
    model.predict(frame), model.predict_proba(frame)
    model.score_case({"age": 41, "sex": "female"})

Tables are pandas DataFrames, dicts of NumPy arrays or lists, and whatever has ``__arrow_c_stream__`` or
``__arrow_c_array__``. NaN, None, NaT and ``pd.NA`` stand for a missing value. Neither pandas nor NumPy is imported
before a table comes.
"""

from nbscore._arrow import ArrowScores, ArrowScoreStream
from nbscore._engine import version as __version__
from nbscore._errors import CaseError, DocumentError
from nbscore._model import Field, Model, PreparedCase, load
from nbscore._reports import Check, Problem, Verification, check, verify

__all__ = ["ArrowScoreStream", "ArrowScores", "CaseError", "Check", "DocumentError", "Field", "Model", "PreparedCase",
           "Problem", "Verification", "__version__", "check", "load", "verify"]
