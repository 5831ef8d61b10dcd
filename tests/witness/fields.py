"""Fields of a document: what a cell means, and what the mining schema puts in its place."""
from expressions import NUMBERS, children, contains, converted, evaluate, expression_of, number_of


class InvalidValue(Exception):
    """A value that ends the case without a result."""


def truth_of(text):
    """A truth value is written as a word, in letters of any case, or as a number; no other text is one."""
    word = text.strip().lower()
    if number_of(word) in (0.0, 1.0):
        return "true" if number_of(word) else "false"
    return word if word in ("true", "false") else text


def key_of(text, numeric, truth):
    """What tells one value of a field from others: 1 and 1.0 are one number, and two texts."""
    return number_of(text) if numeric else truth_of(text) if truth else text


class DataField:
    def __init__(self, element):
        self.name, self.optype = element.get("name"), element.get("optype")
        self.numeric, self.truth = element.get("dataType") in NUMBERS, element.get("dataType") == "boolean"
        values = children(element, "Value")

        def declared(*properties):
            return [self.key(v.get("value")) for v in values if v.get("property", "valid") in properties]

        self.values, self.missing, self.invalid = declared("valid"), declared("missing"), declared("invalid")
        self.texts = [v.get("value") for v in values if v.get("property", "valid") == "valid"]
        self.display = {self.key(v.get("value")): v.get("displayValue") for v in values if v.get("displayValue")}
        self.intervals = children(element, "Interval")

    def key(self, text):
        return key_of(text, self.numeric, self.truth)

    def admits(self, value):
        """What a field of numbers lists beside its intervals lies outside them: it is valid too."""
        if self.numeric and not isinstance(value, float) or self.truth and value not in ("true", "false"):
            return False
        if value in self.invalid:
            return False
        conditions = [value in self.values] if self.values else []
        if self.intervals:
            conditions.append(any(contains(interval, value) for interval in self.intervals))
        return (any if self.optype == "continuous" and conditions else all)(conditions)


class Treatment:
    """What a mining field does with values: first with outlying and invalid ones, then with missing ones."""

    def __init__(self, field, attributes):
        self.field = field
        self.outliers = attributes.get("outliers", "asIs")
        self.low, self.high = number_of(attributes.get("lowValue")), number_of(attributes.get("highValue"))
        # "x-" is how these were written before the standard had them.
        self.invalid = attributes.get("invalidValueTreatment", "returnInvalid").removeprefix("x-")
        self.instead_of_invalid = attributes.get("invalidValueReplacement",
                                                 attributes.get("x-invalidValueReplacement"))
        self.instead_of_missing = attributes.get("missingValueReplacement")
        self.missing_is_invalid = attributes.get("missingValueTreatment", "").endswith("returnInvalid")

    def treated_outlier(self, value):
        for beyond, margin in ((self.low is not None and value < self.low, self.low),
                               (self.high is not None and value > self.high, self.high)):
            if beyond and self.outliers == "asMissingValues":
                return None
            if beyond and self.outliers == "asExtremeValues":
                return margin
        return value

    def treated(self, cell):
        value = None if cell in (None, "") else self.field.key(cell)
        if value is not None and value in self.field.missing:
            value = None
        elif value is None and cell not in (None, ""):
            value = cell  # a text in a field of numbers
        if isinstance(value, float):
            value = self.treated_outlier(value)
        if value is not None and not self.field.admits(value):
            if self.invalid == "returnInvalid":
                raise InvalidValue
            if self.invalid == "asMissing":
                value = None
            elif self.invalid == "asValue":
                value = self.field.key(self.instead_of_invalid)
        if value is None:
            if self.missing_is_invalid:
                raise InvalidValue
            if self.instead_of_missing is not None:
                value = self.field.key(self.instead_of_missing)
        return value


class DerivedField:
    def __init__(self, element):
        self.data_type, self.truth = element.get("dataType"), element.get("dataType") == "boolean"
        self.numeric = self.data_type in NUMBERS
        self.expression = expression_of(element)

    def count(self, texts):
        """It holds numbers only where all counted values are some: bins may have names, whatever the type says."""
        if None in [number_of(text) for text in texts] and self.numeric:
            self.data_type, self.numeric = "string", False

    def key(self, text):
        return key_of(text, self.numeric, self.truth)

    def value(self, scope):
        value = converted(evaluate(self.expression, scope), self.data_type)
        return truth_of(value) if self.truth and value is not None else value


class CaseScope:
    """What expressions see of a case: treated data fields and derived fields."""

    def __init__(self, fields, functions, treated):
        self.fields, self.functions, self.values = fields, functions, dict(treated)

    def is_numeric(self, name):
        return self.fields[name].numeric

    def value(self, name):
        field = self.fields.get(name)
        if name not in self.values:
            self.values[name] = field.value(self) if isinstance(field, DerivedField) else None
        # A text that a field of numbers takes as it stands is none for expressions.
        is_text = field is not None and field.numeric and isinstance(self.values[name], str)
        return None if is_text else self.values[name]


class OutputScope:
    """What the expression of an output sees: the other outputs, and what they do not hide of the case."""

    def __init__(self, case, outputs, own_name):
        self.functions, self.case, self.outputs, self.own_name = case.functions, case, outputs, own_name

    def is_output(self, name):
        return name in self.outputs.fields and name != self.own_name

    def is_numeric(self, name):
        return isinstance(self.value(name), float) if self.is_output(name) else self.case.is_numeric(name)

    def value(self, name):
        return self.outputs.readable(name) if self.is_output(name) else self.case.value(name)
