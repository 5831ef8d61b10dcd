"""A model as a notebook shows it."""

from __future__ import annotations

import html
from typing import TYPE_CHECKING

if TYPE_CHECKING:
    from nbscore._model import Field, Model

_MOST_VALUES = 8
_MOST_ROWS = 40


def _cell(text: object) -> str:
    return f"<td style='text-align: left'>{html.escape(str(text))}</td>"


def _describe_values(field: Field) -> str:
    values = field.bins if field.bins is not None else field.categories
    if values is None:
        return ""
    shown = ", ".join(str(value) for value in values[:_MOST_VALUES])
    more = f", … ({len(values)})" if len(values) > _MOST_VALUES else ""
    return ("cutpoints " if field.bins is not None else "") + shown + more


def write_html(model: Model) -> str:
    """What is predicted, and a table of the fields."""
    content = model._content
    if model.is_set:
        title = f"A set of {len(model.sub_models)} sub-models"
    else:
        classes = ", ".join(str(name) for name in content["classes"][:_MOST_VALUES])
        more = ", …" if len(content["classes"]) > _MOST_VALUES else ""
        title = f"Predicts {content['target']}: {classes}{more}"
    rows = "".join(f"<tr>{_cell(field.name)}{_cell('derived' if field.derived else field.role)}{_cell(field.values)}"
                   f"{_cell(_describe_values(field))}</tr>" for field in model.fields[:_MOST_ROWS])
    hidden = len(model.fields) - _MOST_ROWS
    note = f"<p>and {hidden} more fields</p>" if hidden > 0 else ""
    head = "".join(f"<th style='text-align: left'>{name}</th>" for name in ("field", "role", "values", "categories"))
    return (f"<div><p><b>{html.escape(title)}</b> ({html.escape(model._reading[1])}, the {model.rule} rule)</p>"
            f"<table><thead><tr>{head}</tr></thead><tbody>{rows}</tbody></table>{note}</div>")
