"""Columns of tables as the engine takes them: their memory as it lies, where that can be.

A column is ``(format, length, buffers, dictionary)``, by the letters of the Arrow C data interface. The first buffer
marks what is there; None where all is.
"""

from __future__ import annotations

from typing import TYPE_CHECKING, Any

import numpy as np

from nbscore import _engine
from nbscore._errors import CaseError

if TYPE_CHECKING:
    from collections.abc import Mapping

    from nbscore._model import Field

    Column = _engine.Column

_FORMATS = {"i1": "c", "i2": "s", "i4": "i", "i8": "l", "u1": "C", "u2": "S", "u4": "I", "u8": "L",
            "f4": "f", "f8": "g"}


def _pack(truths: Any) -> Any:
    return np.packbits(truths, bitorder="little")


class ColumnReader:
    """Reads the columns of a table for a model."""

    def __init__(self, fields: Mapping[str, Field], takes_texts: bool) -> None:
        """takes_texts: whether texts among numbers mean anything."""
        self.fields = fields
        self.takes_texts = takes_texts

    def read(self, name: str, values: Any) -> Column:
        """A column of pandas or NumPy, or a list."""
        if hasattr(values, "array") and not isinstance(values.dtype, np.dtype):
            return self._read_extension(name, values.array)
        if isinstance(values, np.ma.MaskedArray):
            objects = np.array(values.data, object)
            objects[np.broadcast_to(np.asarray(values.mask), objects.shape)] = None
            return self._read_objects(name, objects)
        if isinstance(values, (list, tuple)):
            objects = np.empty(len(values), object)
            objects[:] = values
            return self._read_objects(name, objects)
        return self._read_numpy(name, np.asarray(values))

    def _read_extension(self, name: str, array: Any) -> Column:
        """A column of one of the types of pandas."""
        if hasattr(array, "codes") and hasattr(array, "categories"):
            return self._read_categorical(name, array)
        kind = getattr(array.dtype, "kind", "O")
        if kind in "iufb" and hasattr(array.dtype, "numpy_dtype"):
            there = ~np.asarray(array.isna())
            numbers = self._read_numpy(name, array.to_numpy(dtype=array.dtype.numpy_dtype, na_value=0))
            valid = None if there.all() else _pack(there)
            if numbers[2][0] is not None and valid is not None:  # a NaN among those that are there
                valid = np.bitwise_and(valid, np.frombuffer(numbers[2][0], np.uint8))
            elif valid is None:
                valid = numbers[2][0]
            return (numbers[0], numbers[1], (valid, *numbers[2][1:]), None)
        if kind in "mM":
            return self._read_numpy(name, np.asarray(array.isna()), only_missing=True)
        return self._read_objects(name, np.asarray(array.to_numpy(dtype=object)))

    def _read_categorical(self, name: str, array: Any) -> Column:
        """By code: -1 is a missing value there and here."""
        codes = np.require(array.codes, requirements=["C", "A"])
        try:
            values = self.read(name, array.categories.to_numpy())
        except CaseError as error:
            raise CaseError(f"{error.message} That is one of its categories.", name) from None
        if values[0] == "b":  # a dictionary holds numbers or texts
            values = self._read_objects(name, array.categories.to_numpy().astype(object))
        if values[3] is not None:
            values = self._spell_out(values)
        if values[0] == "n":
            return ("n", len(codes), (), None)
        return (_FORMATS[codes.dtype.str[1:]], len(codes), (None, codes), values)

    @staticmethod
    def _spell_out(values: Column) -> Column:
        """Values that are in a dictionary themselves, one by one. Categories are distinct: each has its own code."""
        dictionary: Column = values[3]
        assert dictionary is not None
        codes = np.frombuffer(values[2][1], np.int32)
        assert (codes == np.arange(len(codes))).all()
        return dictionary

    def _read_numpy(self, name: str, array: Any, only_missing: bool = False) -> Column:
        if array.ndim != 1:
            raise CaseError(f'The column "{name}" has {array.ndim} dimensions instead of 1.', name)
        kind = array.dtype.kind
        if only_missing or kind in "mM":
            there = np.flatnonzero(~array if only_missing else ~np.isnat(array))
            if len(there) == 0:
                return ("n", len(array), (), None)
            raise CaseError(f'The column "{name}" holds times, which are neither numbers, texts nor truth values: '
                            f"write them as texts, as the document has them.", name, int(there[0]))
        if kind == "b":
            return ("b", len(array), (None, _pack(array)), None)
        if kind == "f" and array.dtype.itemsize not in (4, 8):
            array = array.astype(np.float64)
        if kind in "iuf":
            array = np.require(array, dtype=array.dtype.newbyteorder("="), requirements=["C", "A"])
            letter = _FORMATS[array.dtype.str[1:]]
            valid = _engine.valid_bits(array, letter) if kind == "f" else None
            return (letter, len(array), (valid, array), None)
        if kind not in "OUT":
            raise CaseError(f'The column "{name}" has the type {array.dtype}, which is neither of numbers, texts nor '
                            f"truth values.", name)
        return self._read_objects(name, array.astype(object))

    def _read_objects(self, name: str, objects: Any) -> Column:
        numeric = self.fields[name].values == "numbers"
        return _engine.encode(np.ascontiguousarray(objects), numeric, self.takes_texts, name)


def read_table(table: Any, fields: Mapping[str, Field], takes_texts: bool) -> _engine.Cases:
    """The columns of a pandas DataFrame or a mapping that a model reads, as one array of cases."""
    reader = ColumnReader(fields, takes_texts)
    columns = []
    size: int | None = len(table) if hasattr(table, "columns") else None
    for name in fields:
        if name not in table:
            continue
        column = reader.read(name, table[name])
        if size is None:
            size = column[1]
        if column[1] != size:
            raise CaseError(f'The column "{name}" has {column[1]} values for {size} cases.', name)
        columns.append((name, column))
    if size is None:  # of a mapping that has none of the columns
        size = max((len(values) for values in table.values()), default=0)
    return _engine.Cases.of_columns(size, columns)
