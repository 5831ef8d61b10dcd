"""Documents as their producers write them: each manner changes a document, which goes on saying the same."""
import xml.etree.ElementTree as ElementTree

from elements import (E, NAMESPACE, density_input, gaussian, interval, naive_bayes, pmml, table_input)


def model_of(document):
    return next(element for element in document.iter() if element.tag == "NaiveBayesModel")


def version(document, text):
    document.set("version", text)
    document.set("xmlns", NAMESPACE + text.replace(".", "_"))


def rename_usage(document, usage):
    for field in document.iter("MiningField"):
        if field.get("usageType") in ("target", "predicted"):
            field.set("usageType", usage)


def counts_with_a_point(document):
    for entry in document.iter("TargetValueCount"):
        if entry.get("count") not in ("NaN", "NA"):
            entry.set("count", repr(float(entry.get("count"))))


def statistics_in_an_extension(document):
    """As R wrote it before a schema admitted statistics: with a field of one value where no input has counts."""
    version(document, "4.1")
    rename_usage(document, "predicted")
    inputs = model_of(document).find("BayesInputs")
    continuous = [input_ for input_ in inputs if input_.find("TargetValueStats") is not None]
    for input_ in continuous:
        inputs.remove(input_)
    if len(inputs) == 0:
        dictionary = document.find("DataDictionary")
        dictionary.append(E("DataField", {"name": "DiscretePlaceHolder", "optype": "categorical", "dataType": "string"},
                            [E("Value", {"value": "pseudoValue"})]))
        dictionary.set("numberOfFields", str(len(dictionary)))
        model_of(document).find("MiningSchema").append(
            E("MiningField", {"name": "DiscretePlaceHolder", "usageType": "active"}))
        entries = model_of(document).find("BayesOutput").find("TargetValueCounts")
        inputs.append(table_input("DiscretePlaceHolder", [e.get("value") for e in entries],
                                  [("pseudoValue", [e.get("count") for e in entries])]))
    if continuous:
        inputs.append(E("Extension", None, continuous))


def statistics_without_the_place_of_none(document):
    """The same, where the field of one value stands in the schema alone."""
    statistics_in_an_extension(document)
    dictionary = document.find("DataDictionary")
    for field in dictionary.findall("DataField"):
        if field.get("name") == "DiscretePlaceHolder":
            dictionary.remove(field)
            dictionary.set("numberOfFields", str(len(dictionary)))


def blanks_around_names(document):
    """As XML that was broken into lines by hand: the fields themselves have no blanks in their names."""
    newest(document)
    for element in document.iter():
        for tag, attribute in (("MiningField", "name"), ("BayesInput", "fieldName"), ("Target", "field")):
            if element.tag == tag:
                element.set(attribute, f"\n{element.get(attribute)} ")


def pretty_printed(document):
    """As KNIME writes it: blanks everywhere, counts with a point, the target a target."""
    version(document, "4.2")
    rename_usage(document, "target")
    counts_with_a_point(document)
    ElementTree.indent(document, "    ")


def inside_a_mining_model(document):
    version(document, "4.3")
    rename_usage(document, "target")
    inner = model_of(document)
    outer = E("MiningModel", {"functionName": "classification"}, [
        ElementTree.fromstring(ElementTree.tostring(inner.find("MiningSchema")))])
    for name in ("Output", "Targets", "LocalTransformations"):
        part = inner.find(name)
        if part is not None:
            inner.remove(part)
            outer.append(part)
    outer.append(E("Segmentation", {"multipleModelMethod": "selectFirst"},
                   [E("Segment", {"id": "1"}, [E("True"), inner])]))
    document.remove(inner)
    document.append(outer)


def inside_a_chain(document):
    """What the only model in it has to say of its outputs stands around it once more."""
    output = model_of(document).find("Output")
    inside_a_mining_model(document)
    document.find("MiningModel/Segmentation").set("multipleModelMethod", "multiModelChain")
    if output is not None:
        model_of(document).insert(1, ElementTree.fromstring(ElementTree.tostring(output)))


def wrapped(document):
    """As of 3.2, with the element more around the model, and the schema in it."""
    version(document, "3.2")
    rename_usage(document, "predicted")
    model = model_of(document)
    document.remove(model)
    schema = model.find("MiningSchema")
    model.remove(schema)
    document.append(E("NaiveBayes", {"threshold": model.attrib.pop("threshold"), "functionName": "classification"},
                      [schema, model]))


def old(document):
    """As of 3.2: nothing but active and predicted fields, and an element more around inputs and output."""
    version(document, "3.2")
    rename_usage(document, "predicted")
    model = model_of(document)
    parts = [model.find(name) for name in ("BayesInputs", "BayesOutput")]
    for part in parts:
        model.remove(part)
    model.append(E("NaiveBayes", None, parts))


def statistics_among_the_inputs(document):
    """As R wrote it later: no invalid value is tolerated, and the output names the result."""
    version(document, "4.2")
    rename_usage(document, "predicted")
    for field in document.iter("MiningField"):
        field.set("invalidValueTreatment", "returnInvalid")
        field.attrib.pop("invalidValueReplacement", None)
        field.attrib.pop("x-invalidValueReplacement", None)
    for entry in document.find("NaiveBayesModel").find("BayesInputs").iter("TargetValueCount"):
        if entry.get("count") != "NA" and float(entry.get("count")) == 0:
            entry.set("count", "NaN")


def newest(document):
    version(document, "4.4")
    rename_usage(document, "target")


MANNERS = (newest, old, wrapped, pretty_printed, blanks_around_names, statistics_in_an_extension,
           statistics_without_the_place_of_none, statistics_among_the_inputs, inside_a_mining_model, inside_a_chain)


# Documents that a producer's own kind of model gives. Each answers a document and a table.

def draw_spark(random):
    """Target and inputs are doubles, 0.0 and 1.0, or numbers of occurrences with Gaussian statistics; counts are
    fractions; there is no threshold."""
    categories = [repr(float(number)) for number in range(random.randint(2, 3))]
    names = [f"field_{number}" for number in range(random.randint(2, 5))]
    values = [E("Value", {"value": value}) for value in ("0.0", "1.0")]
    fields = [E("DataField", {"name": "class", "optype": "categorical", "dataType": "double"},
                [E("Value", {"value": value}) for value in categories])]
    fields += [E("DataField", {"name": name, "optype": "categorical", "dataType": "double"}, values) for name in names]
    schema = [E("MiningField", {"name": "class", "usageType": "target"})] + [
        E("MiningField", {"name": name}) for name in names]

    def fraction():
        return random.uniform(0.01, 40)

    inputs = [table_input(name, categories, [(value, [fraction() for _ in categories]) for value in ("0.0", "1.0")])
              for name in names]
    words = ["word_0", "word_1"]
    fields += [E("DataField", {"name": word, "optype": "continuous", "dataType": "double"}) for word in words]
    schema += [E("MiningField", {"name": word}) for word in words]
    inputs += [density_input(word, categories, [gaussian(fraction(), fraction()) for _ in categories])
               for word in words]
    model = naive_bayes("class", "0.0", schema, inputs, categories, [fraction() for _ in categories])
    rows = [[random.choice(["0", "1", "0.0", "1.0", ""]) for _ in names] +
            [random.choice(["0.0", "3.0", "17", ""]) for _ in words] for _ in range(20)]
    return pmml("a cluster", fields, model, version="4.2"), [names + words, *rows]


def draw_undeclared(random):
    """As of 3.2 and 4.0: texts that look like numbers, in fields that declare nothing."""
    categories = random.sample(["1.0", "2.0", "yes", "no"], 3)
    names = ["one", "two", "three"]
    fields = [E("DataField", {"name": name, "optype": "categorical", "dataType": "string"})
              for name in names + ["class"]]
    schema = [E("MiningField", {"name": name}) for name in names] + [
        E("MiningField", {"name": "class", "usageType": "predicted"})]
    known = ["0.0", "1.0", "2.0"]
    inputs = [table_input(name, categories, [(value, [random.randint(0, 9) for _ in categories]) for value in known])
              for name in names]
    model = naive_bayes("class", random.choice(["0", "0.01"]), schema, inputs, categories,
                        [random.randint(1, 9) for _ in categories])
    rows = [[random.choice(known + ["1", ""]) for _ in names] for _ in range(20)]
    return pmml("an old one", fields, model, version=random.choice(["3.2", "4.0"])), [names, *rows]


def draw_mixed(random):
    """Texts, bins of whole numbers that sit on the margins, and a density, for a target of whole numbers."""
    categories = ["100", "500", "1000"]

    def counts():
        return [random.randint(0, 900) for _ in categories]

    fields = [
        E("DataField", {"name": "gender", "optype": "categorical", "dataType": "string"},
          [E("Value", {"value": value}) for value in ("male", "female")]),
        E("DataField", {"name": "claims", "optype": "categorical", "dataType": "integer"},
          [E("Value", {"value": value}) for value in ("0", "1", "2")]),
        E("DataField", {"name": "age", "optype": "continuous", "dataType": "integer"}),
        E("DataField", {"name": "income", "optype": "continuous", "dataType": "double"}),
        E("DataField", {"name": "amount", "optype": "categorical", "dataType": "integer"},
          [E("Value", {"value": value}) for value in categories])]
    schema = [E("MiningField", {"name": name}) for name in ("gender", "claims", "age", "income")] + [
        E("MiningField", {"name": "amount", "usageType": "target"})]
    margins = [0, 18, 40, 65, 120]
    bins = [E("DiscretizeBin", {"binValue": str(number)}, [interval("closedOpen", left, right)])
            for number, (left, right) in enumerate(zip(margins, margins[1:]))]
    own = E("DerivedField", {"name": "age_bins", "optype": "categorical", "dataType": "string"},
            [E("Discretize", {"field": "age"}, bins)])
    inputs = [
        table_input("gender", categories, [(value, counts()) for value in ("male", "female")]),
        table_input("claims", categories, [(value, counts()) for value in ("0", "1", "2")]),
        table_input("age", categories, [(str(number), counts()) for number in range(len(bins))], own),
        density_input("income", categories, [gaussian(random.randint(1000, 4000), random.randint(10**4, 10**6))
                                             for _ in categories])]
    model = naive_bayes("amount", 0.001, schema, inputs, categories, [random.randint(1, 999) for _ in categories])
    names = ["gender", "claims", "age", "income"]
    rows = [[random.choice(["male", "female", ""]), random.choice(["0", "1", "2", ""]),
             random.choice(["0", "17", "18", "39", "40", "64", "65", "119", "120", ""]),
             random.choice(["1500", "2500.5", "", "1e5"])] for _ in range(25)]
    return pmml("a sample", fields, model), [names, *rows]


def draw_wide(random):
    """So many inputs that products of plain doubles would vanish."""
    categories = ["no", "yes"]
    names = [f"x{number}" for number in range(1200)]
    fields = [E("DataField", {"name": "class", "optype": "categorical", "dataType": "string"})]
    fields += [E("DataField", {"name": name, "optype": "continuous", "dataType": "double"}) for name in names]
    schema = [E("MiningField", {"name": "class", "usageType": "target"})] + [
        E("MiningField", {"name": name}) for name in names]
    inputs = [density_input(name, categories, [gaussian(random.uniform(-1, 1), 1e-3), gaussian(0, 2e-3)])
              if number % 2 else
              table_input(name, categories, [("0", [1, random.randint(1, 9)]), ("1", [1000, 2000])])
              for number, name in enumerate(names)]
    model = naive_bayes("class", "0", schema, inputs, categories, [3, 5])
    rows = [[str(round(random.uniform(-0.3, 0.3), 3)) if number % 2 else "0" for number, _ in enumerate(names)]
            for _ in range(2)]
    return pmml("a wide one", fields, model), [names, *rows]


OWN_KINDS = (draw_spark, draw_undeclared, draw_mixed, draw_wide)
