"""What can go wrong."""

from __future__ import annotations


class DocumentError(ValueError):
    """A document that cannot be scored.

    code: the number of the refusal, as ``docs/documents.md`` lists them.
    message: what is wrong. advice: what to do about it; may be empty.
    file: the document, as it was named. line, column: where the fault stands, from 1; 0 where that is not known.
    path: the element at fault, such as ``/PMML/NaiveBayesModel[1]``; may be empty.
    """

    def __init__(self, message: str, code: int = 0, file: str = "", line: int = 0, column: int = 0, path: str = "",
                 advice: str = "") -> None:
        super().__init__(message, code, file, line, column, path, advice)
        self.message = message
        self.code = code
        self.file = file
        self.line = line
        self.column = column
        self.path = path
        self.advice = advice

    def __str__(self) -> str:
        place = f"{self.file}:{self.line}:{self.column}: " if self.line else f"{self.file}: " if self.file else ""
        return place + self.message + (" " + self.advice if self.advice else "")


class CaseError(ValueError):
    """Cases that do not fit the model.

    message: what is wrong. column: the name of the column at fault; None where no single one is.
    row: the case at fault, from 0; None where the whole column is.
    """

    def __init__(self, message: str, column: str | None = None, row: int | None = None) -> None:
        super().__init__(message, column, row)
        self.message = message
        self.column = column
        self.row = row

    def __str__(self) -> str:
        return self.message

    @classmethod
    def _of_value(cls, column: str, row: int, problem: str) -> CaseError:
        """row: -1 in a case by itself."""
        if row < 0:
            return cls(f'The field "{column}" {problem}.', column)
        return cls(f'The column "{column}" {problem}, in row {row}.', column, row)

    @classmethod
    def _of_message(cls, message: str) -> CaseError:
        """Of the engine's own words, which name the column in quotes and the case by its number."""
        import re

        named = r'(?:The (?:column|field)|The cases lack the column) "(.*?)"(?: (?:has|holds|is|cannot)\b|,)'
        column = re.match(named, message, re.DOTALL)
        row = re.search(r"\bcase (\d+)\b", message[column.end():]) if column else None
        return cls(message, column.group(1) if column else None, int(row.group(1)) if row else None)

    def _in_part(self, first: int) -> CaseError:
        """The same, told of a table of which the cases are a part that begins there."""
        if self.row is None:
            return self
        return CaseError(f"{self.message} That is row {first + self.row} of the table.", self.column, first + self.row)
