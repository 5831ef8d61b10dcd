"""Documents as callers give them, and how they are read."""

from __future__ import annotations

import os
from typing import TYPE_CHECKING

if TYPE_CHECKING:
    from typing import Literal, Protocol, Union

    class Readable(Protocol):
        def read(self) -> bytes | str: ...

    Document = Union[str, os.PathLike[str], bytes, bytearray, memoryview, Readable]
    Rule = Literal["smoothed", "standard"]
    Densities = Literal["threshold", "plain"]
    #: What the engine's calls with a document begin with.
    Reading = tuple[bytes, str, int, bool, bool, int, int]

RULES = {"smoothed": 0, "standard": 1}
DENSITIES = {"threshold": False, "plain": True}


def _choose(choices: dict[str, int] | dict[str, bool], value: str, name: str) -> int:
    if value not in choices:
        raise ValueError(f"{name} is {value!r}, and must be one of {', '.join(map(repr, choices))}.")
    return choices[value]


def read(document: Document, rule: Rule, adapt: bool, densities: Densities, max_memory: int | None,
         max_document_bytes: int | None) -> Reading:
    """What the engine takes. A document is read once: what it holds then is the model's, whatever the file becomes."""
    options = (_choose(RULES, rule, "rule"), bool(adapt), bool(_choose(DENSITIES, densities, "densities")),
               max_memory or 0, max_document_bytes or 0)
    if isinstance(document, (bytes, bytearray, memoryview)):
        return (bytes(document), "document", *options)
    if isinstance(document, (str, os.PathLike)):
        with open(document, "rb") as file:
            return (file.read(), os.fsdecode(document), *options)
    content = document.read()
    name = getattr(document, "name", None)
    return (content.encode("utf-8") if isinstance(content, str) else bytes(content),
            name if isinstance(name, str) else "document", *options)
