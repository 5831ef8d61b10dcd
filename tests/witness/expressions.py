"""What the expressions of derived fields and outputs give. A value is None (missing), a float, a bool or a str."""
import math


def local(element):
    return element.tag.rsplit("}", 1)[-1]


def children(element, *names):
    return [child for child in element if local(child) in names]


def child(element, name):
    found = children(element, name)
    return found[0] if found else None


EXPRESSIONS = ("Constant", "FieldRef", "NormContinuous", "NormDiscrete", "Discretize", "MapValues", "Apply")
NUMBERS = ("integer", "float", "double")


def expression_of(element):
    return children(element, *EXPRESSIONS)[0]


def number_of(value):
    """The number that a value holds, or None."""
    if value is None:
        return None
    try:
        number = float(value)
    except ValueError:
        return None
    return None if math.isnan(number) else number


def text_of(value):
    if isinstance(value, bool):
        return "true" if value else "false"
    if isinstance(value, float):
        return str(int(value)) if value.is_integer() and abs(value) < 1e16 else repr(value)
    return value


def converted(value, data_type):
    """A result as its field stores it."""
    if value is None:
        return None
    return number_of(value) if data_type in NUMBERS else text_of(value)


def number_at(element, name):
    return float(element.get(name)) if element.get(name) is not None else None


def contains(interval, number):
    """Whether an Interval holds a number: each margin by the closure, an absent one is infinite."""
    left, right = number_at(interval, "leftMargin"), number_at(interval, "rightMargin")
    closure = interval.get("closure")
    above = left is None or number > left or (number == left and closure.startswith("closed"))
    below = right is None or number < right or (number == right and closure.endswith("Closed"))
    return above and below


def guessed(text):
    number = number_of(text)
    return text if number is None else number


def missing_result(element, numeric):
    """What stands for a missing field: the text of mapMissingTo in the kind that is wanted."""
    text = element.get("mapMissingTo")
    return text if text is None or not numeric else float(text)


def constant(element, scope):
    text, data_type = element.text or "", element.get("dataType")
    if data_type is None:
        return guessed(text)
    if data_type == "boolean":
        return text in ("true", "1")
    return converted(text, data_type)


def field_ref(element, scope):
    value = scope.value(element.get("field"))
    return missing_result(element, scope.is_numeric(element.get("field"))) if value is None else value


def norm_continuous(element, scope):
    number = number_of(scope.value(element.get("field")))
    points = [(float(p.get("orig")), float(p.get("norm"))) for p in children(element, "LinearNorm")]
    outliers = element.get("outliers", "asIs")
    if number is not None and not points[0][0] <= number <= points[-1][0]:
        if outliers == "asMissingValues":
            number = None
        elif outliers == "asExtremeValues":
            return points[0][1] if number < points[0][0] else points[-1][1]
    if number is None:
        return missing_result(element, True)
    segments = list(zip(points, points[1:]))
    inside = [s for s in segments if number <= s[1][0]] or segments[-1:]
    (x1, y1), (x2, y2) = inside[0]
    return y1 + (number - x1) / (x2 - x1) * (y2 - y1)


def norm_discrete(element, scope):
    value = scope.value(element.get("field"))
    if value is None:
        return missing_result(element, True)
    wanted = element.get("value")
    return float(value == (number_of(wanted) if isinstance(value, float) else wanted))


def in_kind(text, element):
    return converted(text, element.get("dataType", "string"))


def discretize(element, scope):
    number = number_of(scope.value(element.get("field")))
    if number is None:
        return in_kind(element.get("mapMissingTo"), element)
    for bin_ in children(element, "DiscretizeBin"):
        if contains(child(bin_, "Interval"), number):
            return in_kind(bin_.get("binValue"), element)
    return in_kind(element.get("defaultValue"), element)


def map_values(element, scope):
    keys = [(pair.get("column"), scope.value(pair.get("field"))) for pair in children(element, "FieldColumnPair")]
    if any(value is None for _, value in keys):
        return in_kind(element.get("mapMissingTo"), element)

    def matches(row, column, value):
        cell = child(row, column).text or ""
        return number_of(cell) == value if isinstance(value, float) else cell == value

    for row in children(child(element, "InlineTable"), "row"):
        if all(matches(row, column, value) for column, value in keys):
            return in_kind(child(row, element.get("outputColumn")).text or "", element)
    return in_kind(element.get("defaultValue"), element)


def compared(compare):
    """Numbers are compared as numbers as soon as one of the two is one, else texts as texts."""
    def apply(a, b):
        if isinstance(a, (float, bool)) or isinstance(b, (float, bool)):
            a, b = number_of(a), number_of(b)
            if a is None or b is None:
                return None
        return compare(a, b)
    return apply


FUNCTIONS = {
    "+": lambda a, b: number_of(a) + number_of(b),
    "-": lambda a, b: number_of(a) - number_of(b),
    "*": lambda a, b: number_of(a) * number_of(b),
    "/": lambda a, b: number_of(a) / number_of(b),
    "abs": lambda a: abs(number_of(a)),
    "floor": lambda a: float(math.floor(number_of(a))),
    "threshold": lambda a, b: float(number_of(a) > number_of(b)),
    "equal": compared(lambda a, b: a == b),
    "notEqual": compared(lambda a, b: a != b),
    "lessThan": compared(lambda a, b: a < b),
    "lessOrEqual": compared(lambda a, b: a <= b),
    "greaterThan": compared(lambda a, b: a > b),
    "greaterOrEqual": compared(lambda a, b: a >= b),
    "not": lambda value: not value,
    "uppercase": lambda text: text_of(text).upper(),
    "lowercase": lambda text: text_of(text).lower(),
    "concat": lambda *texts: "".join(text_of(text) for text in texts),
}
OF_THOSE_PRESENT = {"min": min, "max": max, "sum": math.fsum}


class Parameters:
    """What the body of a function of the document sees."""

    def __init__(self, values, functions):
        self.values, self.functions = values, functions

    def value(self, name):
        return self.values[name]

    def is_numeric(self, name):
        return isinstance(self.values[name], float)


def call(definition, arguments, functions):
    parameters = children(definition, "ParameterField")
    values = {p.get("name"): converted(a, p.get("dataType", "string")) if p.get("dataType") else a
              for p, a in zip(parameters, arguments)}
    result = evaluate(expression_of(definition), Parameters(values, functions))
    return converted(result, definition.get("dataType")) if definition.get("dataType") else result


def result_of(element, scope):
    name = element.get("function")
    expressions = children(element, *EXPRESSIONS)
    if name == "if":
        condition = evaluate(expressions[0], scope)
        chosen = expressions[1:2] if condition else expressions[2:3]
        return evaluate(chosen[0], scope) if condition is not None and chosen else None
    arguments = [evaluate(expression, scope) for expression in expressions]
    if None in arguments and element.get("mapMissingTo") is not None:
        return guessed(element.get("mapMissingTo"))
    if name in ("and", "or"):
        # What is known decides alone where it can.
        deciding = name == "or"
        return deciding if deciding in arguments else None if None in arguments else not deciding
    if name in ("isMissing", "isNotMissing"):
        return (arguments[0] is None) == (name == "isMissing")
    if name in scope.functions:
        return call(scope.functions[name], arguments, scope.functions)
    if name in OF_THOSE_PRESENT:
        present = [number_of(value) for value in arguments if value is not None]
        return OF_THOSE_PRESENT[name](present) if present else None
    return None if None in arguments else FUNCTIONS[name](*arguments)


def apply(element, scope):
    result = result_of(element, scope)
    default = element.get("defaultValue")
    return guessed(default) if result is None and default is not None else result


KINDS = {"Constant": constant, "FieldRef": field_ref, "NormContinuous": norm_continuous, "NormDiscrete": norm_discrete,
         "Discretize": discretize, "MapValues": map_values, "Apply": apply}


def evaluate(element, scope):
    return KINDS[local(element)](element, scope)
