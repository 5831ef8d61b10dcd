"""Fields of a document: what a cell means, and what the mining schema puts in its place."""
from expressions import NUMBERS, children, contains, converted, evaluate, expression_of, number_of


class InvalidValue(Exception):
    """A value that ends the case without a result."""


class DataField:
    def __init__(self, element):
        self.name = element.get("name")
        self.numeric = element.get("dataType") in NUMBERS
        values = children(element, "Value")

        def declared(*properties):
            return [self.key(v.get("value")) for v in values if v.get("property", "valid") in properties]

        self.values, self.missing, self.invalid = declared("valid"), declared("missing"), declared("invalid")
        self.display = {self.key(v.get("value")): v.get("displayValue") for v in values if v.get("displayValue")}
        self.intervals = children(element, "Interval")

    def key(self, text):
        """What tells one value of the field from others: 1 and 1.0 are one number, and two texts."""
        return number_of(text) if self.numeric else text

    def admits(self, value):
        if self.numeric and not isinstance(value, float):
            return False
        if value in self.invalid or (self.values and value not in self.values):
            return False
        return not self.intervals or any(contains(interval, value) for interval in self.intervals)


class Treatment:
    """What a mining field does with values: first with outlying and invalid ones, then with missing ones."""

    def __init__(self, field, attributes):
        self.field = field
        self.outliers = attributes.get("outliers", "asIs")
        self.low, self.high = number_of(attributes.get("lowValue")), number_of(attributes.get("highValue"))
        self.invalid = attributes.get("invalidValueTreatment", "returnInvalid")
        self.instead_of_invalid = attributes.get("invalidValueReplacement")
        self.instead_of_missing = attributes.get("missingValueReplacement")
        self.missing_is_invalid = attributes.get("missingValueTreatment") == "returnInvalid"

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
        self.data_type = element.get("dataType")
        self.numeric = self.data_type in NUMBERS
        self.expression = expression_of(element)

    def key(self, text):
        return number_of(text) if self.numeric else text

    def value(self, scope):
        return converted(evaluate(self.expression, scope), self.data_type)


class CaseScope:
    """What expressions see of a case: treated data fields, derived fields, and what else is given."""

    def __init__(self, fields, functions, treated, given=None):
        self.fields, self.functions, self.values = fields, functions, {**treated, **(given or {})}

    def is_numeric(self, name):
        return self.fields[name].numeric if name in self.fields else isinstance(self.values.get(name), float)

    def value(self, name):
        field = self.fields.get(name)
        if name not in self.values:
            self.values[name] = field.value(self) if isinstance(field, DerivedField) else None
        # A text that a field of numbers takes as it stands is none for expressions.
        is_text = field is not None and field.numeric and isinstance(self.values[name], str)
        return None if is_text else self.values[name]
