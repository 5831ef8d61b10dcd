"""Models that scikit-learn fits to the data that it ships, as documents, with its own answers."""
import numpy
from sklearn import datasets
from sklearn.naive_bayes import BernoulliNB, CategoricalNB, GaussianNB

from answers import Answers
from elements import E, density_input, gaussian, interval, naive_bayes, pmml, table_input, written


def loaded():
    return {name: load(return_X_y=True) for name, load in (
        ("iris", datasets.load_iris), ("wine", datasets.load_wine), ("breast cancer", datasets.load_breast_cancer),
        ("digits", datasets.load_digits))}


def names_of(data):
    return [f"x{column}" for column in range(data.shape[1])]


def document(model, names, inputs, counts):
    """As Python exporters write it: the target is numbers, and each number of the table is a double."""
    categories = [str(category) for category in model.classes_]
    fields = [E("DataField", {"name": name, "optype": "continuous", "dataType": "double"}) for name in names]
    fields.append(E("DataField", {"name": "target", "optype": "categorical", "dataType": "integer"},
                    [E("Value", {"value": category}) for category in categories]))
    schema = [E("MiningField", {"name": name}) for name in names]
    schema.append(E("MiningField", {"name": "target", "usageType": "target"}))
    # No threshold: these models have no floor. Where a density is below one, their answers would differ.
    return pmml("a Python exporter", fields, naive_bayes("target", "0", schema, inputs, categories, counts),
                version="4.4")


def answers(name, model, names, inputs, counts, data, given=None):
    """@param data what the document's fields hold; given: what the model reads in its place."""
    given = data if given is None else given
    categories = [str(category) for category in model.classes_]
    rows = [names] + [[written(float(value)) for value in row] for row in data]
    predicted = [str(category) for category in model.predict(given)]
    return Answers(name, document(model, names, inputs, counts), rows, "target", categories,
                   model.predict_proba(given).tolist(), predicted)


def gaussian_models():
    for name, (data, target) in loaded().items():
        for smoothing in (1e-9, 1e-2):
            model = GaussianNB(var_smoothing=smoothing).fit(data[::2], target[::2])
            # The variances as they are used: each plus a share of the largest.
            inputs = [density_input(field, model.classes_, [gaussian(float(mean), float(variance)) for mean, variance in
                                                            zip(model.theta_[:, column], model.var_[:, column])])
                      for column, field in enumerate(names_of(data))]
            yield answers(f"GaussianNB of {name}, smoothing {smoothing}", model, names_of(data), inputs,
                          model.class_count_.tolist(), data)


def discretized(field, margins):
    """The bins of numpy.digitize: each holds its left margin."""
    edges = [None, *margins, None]
    return E("DerivedField", {"optype": "categorical", "dataType": "string"}, [E("Discretize", {"field": field}, [
        E("DiscretizeBin", {"binValue": number}, [interval("closedOpen", left, right)])
        for number, (left, right) in enumerate(zip(edges, edges[1:]))])])


def categorical_models():
    for name, (data, target) in loaded().items():
        margins = [sorted({float(margin) for margin in numpy.quantile(data[:, column], [0.2, 0.4, 0.6, 0.8])})
                   for column in range(data.shape[1])]
        codes = numpy.column_stack([numpy.digitize(data[:, c], margins[c]) for c in range(data.shape[1])])
        for alpha in (1.0, 0.01):
            amounts = [len(m) + 1 for m in margins]
            model = CategoricalNB(alpha=alpha, min_categories=amounts).fit(codes[::2], target[::2])
            # Smoothed counts: those that were counted, plus alpha.
            inputs = [table_input(field, model.classes_, [
                (code, (model.category_count_[column][:, code] + alpha).tolist()) for code in range(amounts[column])],
                discretized(field, margins[column])) for column, field in enumerate(names_of(data))]
            yield answers(f"CategoricalNB of {name}, alpha {alpha}", model, names_of(data), inputs,
                          model.class_count_.tolist(), data, codes)


def binarized(field, margin):
    """1 above the margin, else 0."""
    return E("DerivedField", {"optype": "categorical", "dataType": "string"}, [E("Discretize", {"field": field}, [
        E("DiscretizeBin", {"binValue": "1"}, [interval("openOpen", margin, None)]),
        E("DiscretizeBin", {"binValue": "0"}, [interval("openClosed", None, margin)])])])


def bernoulli_models():
    for name, (data, target) in loaded().items():
        margin = float(numpy.median(data))
        for alpha, fits_prior in ((1.0, True), (0.5, False)):
            model = BernoulliNB(alpha=alpha, binarize=margin, fit_prior=fits_prior).fit(data[::2], target[::2])
            ones = model.feature_count_ + alpha
            zeros = model.class_count_[:, None] - model.feature_count_ + alpha
            inputs = [table_input(field, model.classes_, [("0", zeros[:, column].tolist()),
                                                          ("1", ones[:, column].tolist())], binarized(field, margin))
                      for column, field in enumerate(names_of(data))]
            counts = model.class_count_.tolist() if fits_prior else [1] * len(model.classes_)
            yield answers(f"BernoulliNB of {name}, alpha {alpha}", model, names_of(data), inputs, counts, data)


def all_answers():
    yield from gaussian_models()
    yield from categorical_models()
    yield from bernoulli_models()
