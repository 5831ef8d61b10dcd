"""Draws documents of the standard's kind, each with a table of cases."""
from elements import (E, apply, constant, density_input, field_ref, gaussian, interval, naive_bayes, pmml, table_input,
                      written)

CLOSURES = ("openOpen", "openClosed", "closedOpen", "closedClosed")
TRUTHS = {"true": ("true", "TRUE", "True", "1"), "false": ("false", "FALSE", "False", "0")}
COLOURS = ("red", "green", "blue", "a b", "x&y", "ä", "1.0", "7")


class Drawn:
    """One document being drawn: its parts, and for each column the texts that its cells may have."""

    def __init__(self, random):
        self.random, self.fields, self.schema, self.derived, self.inputs, self.cells = random, [], [], [], [], {}
        self.functions = []
        self.threshold = random.choice(["0", "0", "0.001", "0.001", "1e-10", "0.05", "0.25"])
        self.draw_target()

    def chance(self, share):
        return self.random.random() < share

    def number(self, low, high):
        """Short ones and long ones."""
        drawn = self.random.uniform(low, high)
        return self.random.choice([round(drawn, 1), round(drawn), drawn])

    def draw_target(self):
        kind = self.random.choice(["string", "string", "string", "integer", "double", "boolean"])
        amount = self.random.randint(2, 5)
        texts = self.random.sample(["yes", "no", "perhaps", "x y", "später"], amount)
        self.categories = texts if kind == "string" else [str(number) for number in range(amount)]
        if kind == "boolean":
            self.categories = self.truths()
        self.target_kind, self.declares_target = kind, self.chance(0.7)
        values = [E("Value", {"value": c, "displayValue": f"<{c}>" if self.chance(0.3) else None})
                  for c in self.categories] if self.declares_target else []
        self.fields.append(E("DataField", {"name": "target", "optype": "categorical", "dataType": kind}, values))
        self.schema.append(E("MiningField", {"name": "target",
                                             "usageType": self.random.choice(["target", "predicted"])}))

    def truths(self):
        """Both truth values, in one of the ways to spell them."""
        style = self.random.randrange(4)
        return [TRUTHS["true"][style], TRUTHS["false"][style]]

    def names_of_categories(self):
        """A category of a target that is no text may be written as another text of the same value."""
        if self.target_kind == "boolean" and self.declares_target:
            return self.truths()
        other = self.target_kind in ("integer", "double") and self.chance(0.5)
        return [text + ".0" if other else text for text in self.categories]

    def counts(self):
        drawn = [self.random.choice([0, 0.5, 1, 3, 17, 250, round(self.random.uniform(0, 40), 2)])
                 for _ in self.categories]
        style = self.random.choice(["plain", "plain", "fraction", "gaps"])
        if style == "fraction":
            return [float(count) for count in drawn]
        return [None if style == "gaps" and count == 0 else
                self.random.choice(["NaN", "NA"]) if count == 0 and self.chance(0.1) else count
                for count in drawn]

    def class_counts(self):
        """Where the target declares no values, those that are counted are its categories, so none may be left out."""
        counts = [count if self.declares_target else count or 0 for count in self.counts()]
        return counts if any(c not in (None, 0, "NaN", "NA") for c in counts) or self.chance(0.2) else [1 for _ in counts]

    def treatments(self, numeric, replacements):
        attributes = {}
        if self.chance(0.3):
            attributes["missingValueReplacement"] = self.random.choice(replacements)
            attributes["missingValueTreatment"] = self.random.choice([None, "asMean", "asMode", "asValue"])
        elif self.chance(0.1):
            attributes["missingValueTreatment"] = "returnInvalid"
        attributes["invalidValueTreatment"] = self.random.choice(
            [None, "returnInvalid", "asIs", "asIs", "asMissing", "asMissing", "asValue"])
        if attributes["invalidValueTreatment"] == "asValue":
            older = self.chance(0.3)
            attributes["invalidValueTreatment"] = "x-asValue" if older else "asValue"
            attributes[("x-" if older else "") + "invalidValueReplacement"] = self.random.choice(replacements)
        if numeric and self.chance(0.4):
            attributes.update(outliers=self.random.choice(["asIs", "asMissingValues", "asExtremeValues"]),
                              lowValue=self.number(-5, 0), highValue=self.number(10, 20))
        return attributes

    def add_field(self, name, numeric, values, cells, replacements, content=()):
        optype = "continuous" if numeric and not values else self.random.choice(["categorical", "ordinal"])
        data_type = self.random.choice(["double", "double", "float"]) if numeric else "string"
        declared = [E("Value", {"value": value}) for value in values] + list(content)
        if self.chance(0.2):
            missing = "-99" if numeric else "unknown"
            declared.append(E("Value", {"value": missing, "property": "missing"}))
            cells = cells + [missing]
        if self.chance(0.15):
            forbidden = "4" if numeric else "blue"
            if forbidden not in values:
                declared.append(E("Value", {"value": forbidden, "property": "invalid"}))
                cells = cells + [forbidden]
        self.fields.append(E("DataField", {"name": name, "optype": optype, "dataType": data_type}, declared))
        attributes = {"name": name, "usageType": "active" if self.chance(0.5) else None,
                      **self.treatments(numeric and not values, replacements)}
        if self.chance(0.1) and numeric and not values:
            attributes["optype"] = "continuous"
        if not self.chance(0.05):
            self.schema.append(E("MiningField", attributes))
        self.cells[name] = cells + [""] + ["n/a"] * (numeric and self.chance(0.2))

    # The kinds of inputs. Each adds a field and an input.

    def add_texts(self, name):
        known = self.random.sample(COLOURS, self.random.randint(1, 5))
        counted = [value for value in known if not self.chance(0.1)] or known
        declares = self.chance(0.6)
        self.add_field(name, False, known if declares else [], known * 3 + ["other", "Red"], known + ["other"])
        self.inputs.append(table_input(name, self.names_of_categories(), [(v, self.counts()) for v in counted]))

    def add_numbers(self, name):
        known = self.random.sample(["0", "1", "2", "3.5", "-4", "1e3"], self.random.randint(2, 4))
        declares = self.chance(0.5)
        cells = known * 2 + [written(float(value)) for value in known] + ["99", "17", f" {known[0]} "]
        self.add_field(name, True, known if declares else [], cells, known + ["99"])
        rows = [(written(float(value)) if self.chance(0.3) else value, self.counts()) for value in known]
        self.inputs.append(table_input(name, self.names_of_categories(), rows))

    def continuous(self, name, extra=()):
        bounds = []
        if self.chance(0.4):
            bounds = [interval(self.random.choice(CLOSURES), -3, 12) if self.chance(0.5)
                      else interval(self.random.choice(CLOSURES), None, 15)]
        cells = [written(self.number(-6, 22)) for _ in range(12)] + ["-3", "12", "15", "0"] + list(extra)
        if bounds and self.chance(0.3):
            bounds += [E("Value", {"value": value}) for value in ("99", "4")]
            cells += ["99", "99.0", "98"]
        self.add_field(name, True, [], cells, ["0", "2.5", "100"], bounds)

    def bins(self, field, margins, texts):
        """Bins over the margins in any order, with gaps; the texts may repeat."""
        edges = [None] * self.chance(0.6) + margins + [None] * self.chance(0.6)
        closure = self.random.choice(["closedOpen", "openClosed"])
        drawn = [E("DiscretizeBin", {"binValue": text}, [interval(closure, left, right)])
                 for left, right, text in zip(edges, edges[1:], texts) if not self.chance(0.15)]
        if margins and not drawn:
            drawn = [E("DiscretizeBin", {"binValue": texts[0]}, [interval("closedClosed", margins[0], margins[-1])])]
        self.random.shuffle(drawn)
        return E("Discretize", {"field": field, "defaultValue": texts[-1] if self.chance(0.3) else None,
                                "mapMissingTo": texts[0] if self.chance(0.3) else None}, drawn)

    def add_bins(self, name):
        margins = sorted(self.random.sample(range(-5, 20), self.random.randint(2, 4)))
        self.continuous(name, [written(margin) for margin in margins])
        texts = [self.random.choice("abcdef") for _ in range(6)]
        own = E("DerivedField", {"optype": "categorical", "dataType": self.type_of_words(),
                                 "name": name + "_bins" if self.chance(0.3) else None},
                [self.bins(name, margins, texts)])
        counted = sorted(set(texts))[self.chance(0.2):] or texts[:1]
        self.inputs.append(table_input(name, self.names_of_categories(), [(t, self.counts()) for t in counted], own))

    def type_of_words(self):
        """Bins with names in a field that is said to hold numbers."""
        return self.random.choice(["string", "string", "string", "double", "integer"])

    def densities(self):
        def draw():
            kind = self.random.choice(["Gaussian"] * 4 + ["Any", "Uniform", "Poisson"])
            if kind == "Poisson":
                return E("PoissonDistribution", {"mean": self.random.choice([0.5, 3, self.number(1, 20)])})
            if kind == "Uniform":
                low = self.number(-5, 5)
                return E("UniformDistribution", {"lower": low, "upper": low + self.random.choice([0.5, 4, 20, 0])})
            if self.chance(0.05):
                return self.random.choice([gaussian("NaN", "NaN"), gaussian("2", "NA")])
            variance = self.random.choice([0, "1e-400", 0.01, 0.5, 1, 4, self.random.uniform(0.1, 30)])
            return gaussian(self.number(-3, 12), variance, kind + "Distribution")
        return [None if self.chance(0.05) else draw() for _ in self.categories]

    def add_density(self, name):
        self.continuous(name, ["0", "1", "2", "3", "7", "12"])
        self.inputs.append(density_input(name, self.names_of_categories(), self.densities()))

    def add_derived(self, name):
        """An input that reads a derived field of a field of numbers."""
        self.continuous(name)
        made = name + "_made"
        text, numbers = [("Discretize", 0), ("if", 0)], [("FieldRef", 1), ("NormContinuous", 1), ("arithmetic", 1)]
        kind, is_number = self.random.choice(text + numbers)
        expression = {
            "Discretize": lambda: self.bins(name, sorted(self.random.sample(range(-5, 20), 3)), list("abcdef")),
            "if": lambda: apply("if", apply("lessThan", field_ref(name), constant(self.number(-2, 9))),
                                constant("a", "string"), constant("b", "string"),
                                defaultValue="c" if self.chance(0.5) else None),
            "FieldRef": lambda: field_ref(name, mapMissingTo="1.5" if self.chance(0.4) else None),
            "NormContinuous": lambda: E("NormContinuous", {
                "field": name, "outliers": self.random.choice([None, "asExtremeValues", "asMissingValues"])},
                [E("LinearNorm", {"orig": x, "norm": y}) for x, y in [(-2, 0), (5, 4), (11, 10)]]),
            "arithmetic": lambda: apply(self.random.choice("+-*"), field_ref(name), apply(
                "min", field_ref(name), constant(self.number(1, 5)))),
        }[kind]()
        self.derived.append(E("DerivedField", {
            "name": made, "optype": "continuous" if is_number else "categorical",
            "dataType": "double" if is_number else self.type_of_words() if kind == "Discretize" else "string"},
            [expression]))
        names = self.names_of_categories()
        self.inputs.append(density_input(made, names, self.densities()) if is_number else
                           table_input(made, names, [(text, self.counts()) for text in "abcde"]))

    def add_mapped(self, name):
        """An input that reads a derived field of a field of texts."""
        known = self.random.sample(COLOURS, 3)
        self.add_field(name, False, known if self.chance(0.5) else [], known * 2 + ["other"], known)
        made = name + "_mapped"
        rows = [E("row", None, [E("from", None, value), E("to", None, text)]) for value, text in zip(known, "abb")]
        self.derived.append(E("DerivedField", {"name": made, "optype": "categorical", "dataType": "string"}, [
            E("MapValues", {"outputColumn": "to", "defaultValue": "d" if self.chance(0.5) else None,
                            "mapMissingTo": "m" if self.chance(0.4) else None},
              [E("FieldColumnPair", {"field": name, "column": "from"}), E("InlineTable", None, rows)])]))
        self.inputs.append(table_input(made, self.names_of_categories(), [(t, self.counts()) for t in "abdm"]))

    def add_unread(self, name):
        """A field that no input reads; its values may be invalid all the same. The table need not have it."""
        self.add_field(name, False, ["p", "q"], ["p", "q", "p", "q", "r"], ["p"])
        if self.chance(0.3):
            del self.cells[name]

    def add_passed_over(self, name):
        """A field that has nothing to do with scoring, whatever its values are."""
        self.add_field(name, False, ["p", "q"], ["p", "r"], ["p"])
        for field in self.schema:
            if field.get("name") == name:
                field.set("usageType", self.random.choice(["supplementary", "order", "group"]))

    def add_truth(self, name):
        """A field of truth values, which everyone spells in a way of his own; or a derived field of them."""
        spellings = [text for texts in TRUTHS.values() for text in texts]
        declared = self.truths()[:self.random.choice([2, 2, 1])] if self.chance(0.5) else []
        self.fields.append(E("DataField", {"name": name, "optype": "categorical", "dataType": "boolean"},
                             [E("Value", {"value": value}) for value in declared]))
        self.schema.append(E("MiningField", {"name": name, **self.treatments(False, spellings)}))
        self.cells[name] = spellings + ["1.0", "perhaps", "", ""]
        counted = self.truths() + (["perhaps"] if self.chance(0.3) else [])
        self.inputs.append(table_input(name, self.names_of_categories(), [(v, self.counts()) for v in counted]))
        if self.chance(0.4):
            self.continuous(name + "_x")
            yes, no = self.truths()
            self.derived.append(E("DerivedField", {"name": name + "_y", "optype": "categorical", "dataType": "boolean"},
                                  [apply("if", apply("lessThan", field_ref(name + "_x"), constant(4)),
                                         constant(yes, "string"), constant(no, "string"))]))
            self.inputs.append(table_input(name + "_y", self.names_of_categories(), [
                (value, self.counts()) for value in self.truths()]))

    def add_computed(self, name):
        """An input with an expression of its own, over a derived field that calls a function of the document."""
        self.continuous(name)
        made = name + "_half"
        self.functions.append(E("DefineFunction", {
            "name": name + "_f", "optype": "continuous", "dataType": "double"}, [
                E("ParameterField", {"name": "p", "dataType": "double"}), apply("*", field_ref("p"), constant(0.5))]))
        self.derived.append(E("DerivedField", {"name": made, "optype": "continuous", "dataType": "double"}, [
            apply(name + "_f", field_ref(name))]))
        self.derived.append(E("DerivedField", {"name": made + "_again", "optype": "continuous", "dataType": "double"}, [
            field_ref(made)]))
        whole = self.chance(0.5)
        is_small = apply("or", apply("isMissing", field_ref(name)), apply(
            "greaterOrEqual", constant(3), field_ref(made)))
        expression = apply("floor", field_ref(made + "_again")) if whole else apply(
            "if", is_small, constant("small", "string"), constant("large", "string"))
        own = E("DerivedField", {"optype": "categorical", "dataType": "integer" if whole else "string"}, [expression])
        values = [str(number) for number in range(-2, 9)] if whole else ["small", "large"]
        self.inputs.append(table_input(made if whole else name, self.names_of_categories(),
                                       [(value, self.counts()) for value in values], own))

    # What surrounds the model.

    def targets(self):
        if not self.chance(0.4):
            return None
        shares = self.chance(0.6)
        return E("Targets", None, [E("Target", {"field": "target", "optype": "categorical"}, [
            E("TargetValue", {"value": category, "displayValue": f"[{category}]" if self.chance(0.5) else None,
                              "priorProbability": round(self.random.uniform(0.05, 0.9), 3) if shares else None})
            for category in self.names_of_categories()])])

    def output(self):
        if not self.chance(0.6):
            return None
        names = self.names_of_categories()
        predicted = self.random.choice(["Predicted_target", "Predicted_target", "target"])
        fields = [self.output_field(predicted, None if self.chance(0.5) else "predictedValue")]
        for category, name in zip(self.categories, names):
            if self.chance(0.8):
                fields.append(self.output_field("Probability_" + category, "probability", value=name))
        others = [
            self.output_field("highest", "probability"), self.output_field("shown", "predictedDisplayValue"),
            self.output_field("remark", "warning"),
            self.output_field("missed", "residual", value=self.random.choice(names)),
        ]
        fields += self.random.sample(others, self.random.randint(0, len(others)))
        if fields[-1].get("name") == "highest":
            fields.append(self.output_field("percent", "transformedValue", [
                apply("*", field_ref("highest"), constant(100))]))
            fields.append(self.output_field("sure", "decision", [
                apply("if", apply("greaterThan", field_ref("highest"), constant(0.75)),
                      constant("sure", "string"), constant("not sure", "string"))], data_type="string"))
            fields.append(self.output_field("again", "transformedValue", [
                apply("+", field_ref("percent"), constant(1), defaultValue="-1")]))
        numbers = [name for name in self.cells if name.startswith("density")]
        if numbers and self.chance(0.5):
            fields.append(self.output_field("treated", "transformedValue", [field_ref(numbers[0])]))
        fields += self.outputs_named_like_fields()
        for field in fields[1:]:
            if self.chance(0.1):
                field.set("isFinalResult", "false")
        return E("Output", None, fields)

    def outputs_named_like_fields(self):
        """They hide the fields from the other outputs, not from what the document computes of them."""
        numbers = [name for name in self.cells if self.random.random() < 0.3 and
                   name.startswith(("density", "derived", "computed", "bins"))]
        drawn = []
        for name in numbers:
            one_more = [apply("+", field_ref(name), constant(1))]
            drawn.append(self.output_field(name, "transformedValue", one_more) if self.chance(0.5) else
                         self.output_field(name, "probability", value=self.names_of_categories()[0]))
            drawn.append(self.output_field(name + "_seen", "transformedValue", one_more))
        for derived in self.derived:
            if derived.get("dataType") == "double" and derived.find("Discretize") is None and self.chance(0.4):
                own = derived.get("name") if self.chance(0.5) else derived.get("name") + "_out"
                drawn.append(self.output_field(own, "transformedValue", [
                    apply("+", field_ref(derived.get("name")), constant(0.5))]))
        return drawn

    def output_field(self, name, feature, content=(), value=None, data_type=None):
        number = feature in ("probability", "residual", "transformedValue") and data_type is None
        return E("OutputField", {
            "name": name, "feature": feature, "value": value, "optype": "continuous" if number else "categorical",
            "dataType": "double" if number else data_type or
            (self.target_kind if feature in (None, "predictedValue") else "string"),
            "targetField": "target" if feature != "transformedValue" and not content and self.chance(0.2) else None},
            content)


INPUTS = ("texts", "texts", "numbers", "bins", "density", "density", "derived", "mapped", "truth", "computed")


def draw_document(random):
    """A document as an element and its table as a list of rows, the first of them names."""
    drawn = Drawn(random)
    for number in range(random.choice([1, 2, 3, 5, 8])):
        kind = random.choice(INPUTS + ("unread", "passed_over") if number else INPUTS)
        getattr(drawn, "add_" + kind)(f"{kind}_{number}")
    outputs, targets = drawn.output(), drawn.targets()
    local = drawn.derived and random.random() < 0.6
    transformations = E("LocalTransformations" if local else "TransformationDictionary", None,
                        drawn.functions + drawn.derived)
    order = drawn.names_of_categories()
    if drawn.declares_target:
        random.shuffle(order)
    model = naive_bayes("target", drawn.threshold, drawn.schema, drawn.inputs, order, drawn.class_counts(),
                        [outputs, targets, transformations if local else None])
    document = pmml("drawn", drawn.fields, model, transformations if drawn.derived and not local else None)
    return document, draw_table(random, drawn)


def draw_table(random, drawn):
    columns = {name: cells for name, cells in drawn.cells.items()}
    if random.random() < 0.5:
        others = [text for texts in TRUTHS.values() for text in texts] if drawn.target_kind == "boolean" else []
        columns["target"] = drawn.categories + others + [""]
    columns["comment"] = ["any text"]
    names = list(columns)
    random.shuffle(names)
    rows = [[random.choice(columns[name]) for name in names] for _ in range(25)]
    return [names, *rows, ["" for _ in names]]
