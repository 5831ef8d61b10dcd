"""Elements of documents that the tests write."""
import xml.etree.ElementTree as ElementTree

NAMESPACE = "http://www.dmg.org/PMML-"


def E(tag, attributes=None, content=()):
    """An element; attributes that are None are left out, and so is content."""
    element = ElementTree.Element(tag)
    for name, value in (attributes or {}).items():
        if value is not None:
            element.set(name, written(value))
    for part in [content] if isinstance(content, str) else content:
        if isinstance(part, str):
            element.text = part
        elif part is not None:
            element.append(part)
    return element


def written(value):
    """Numbers so that they read back as the same double."""
    return repr(value) if isinstance(value, float) else str(value)


def field_ref(field, **attributes):
    return E("FieldRef", {"field": field, **attributes})


def constant(value, data_type=None):
    return E("Constant", {"dataType": data_type}, written(value))


def apply(function, *arguments, **attributes):
    return E("Apply", {"function": function, **attributes}, arguments)


def interval(closure, left, right):
    return E("Interval", {"closure": closure, "leftMargin": left, "rightMargin": right})


def target_counts(categories, counts):
    """Counts for each category; none where the count is None."""
    return E("TargetValueCounts", None, [E("TargetValueCount", {"value": category, "count": count})
                                         for category, count in zip(categories, counts) if count is not None])


def table_input(field, categories, rows, derived=None):
    """An input with counts: a value and its counts for each row."""
    return E("BayesInput", {"fieldName": field}, [derived] + [
        E("PairCounts", {"value": value}, [target_counts(categories, counts)]) for value, counts in rows])


def density_input(field, categories, densities, derived=None):
    """An input with statistics: a distribution element for each category, or None."""
    return E("BayesInput", {"fieldName": field}, [derived, E("TargetValueStats", None, [
        E("TargetValueStat", {"value": category}, [density])
        for category, density in zip(categories, densities) if density is not None])])


def gaussian(mean, variance, tag="GaussianDistribution"):
    return E(tag, {"mean": mean, "variance": variance})


def naive_bayes(target, threshold, schema, inputs, categories, counts, before=(), behind=()):
    """@param before what stands between the schema and the inputs; behind: what stands at the end."""
    return E("NaiveBayesModel", {"modelName": "a model", "functionName": "classification", "threshold": threshold},
             [E("MiningSchema", None, schema), *before, E("BayesInputs", None, inputs),
              E("BayesOutput", {"fieldName": target}, [target_counts(categories, counts)]), *behind])


def pmml(application, fields, model, transformations=None, version="4.4"):
    return E("PMML", {"xmlns": NAMESPACE + version.replace(".", "_"), "version": version},
             [E("Header", {"copyright": "none"}, [E("Application", {"name": application})]),
              E("DataDictionary", {"numberOfFields": len(fields)}, fields), transformations, model])


def write(document, path, indented=False):
    if indented:
        ElementTree.indent(document, "    ")
    ElementTree.ElementTree(document).write(path, encoding="utf-8", xml_declaration=True)
