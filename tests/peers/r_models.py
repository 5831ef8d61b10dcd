"""Models that R's naiveBayes fits to the data that it ships, as documents in two manners of R, with R's own answers."""
import csv
import pathlib
import subprocess
import tempfile

from answers import Answers
from elements import E, density_input, gaussian, naive_bayes, pmml, table_input
from manners import statistics_in_an_extension

HERE = pathlib.Path(__file__).parent


def rows_of(path):
    with open(path, newline="", encoding="utf-8") as stream:
        return list(csv.reader(stream))


class RModel:
    """What a folder holds that r_models.R wrote."""

    def __init__(self, folder):
        self.name = folder.name
        self.cases = rows_of(folder / "cases.csv")
        header, *answers = rows_of(folder / "answers.csv")
        self.categories = header[:-1]
        self.probabilities = [[float(cell) for cell in row[:-1]] for row in answers]
        self.predicted = [row[-1] for row in answers]
        self.target, self.threshold = rows_of(folder / "settings.csv")[1]
        self.counts, self.inputs = {}, {}
        for kind, field, value, category, figure in rows_of(folder / "figures.csv")[1:]:
            if kind == "count":
                self.counts[category] = float(figure)
            else:
                self.inputs.setdefault(field, (kind, {}))[1].setdefault(value, {})[category] = float(figure)

    def fields(self, field):
        kind, figures = self.inputs[field]
        values = [E("Value", {"value": value}) for value in figures] if kind == "share" else []
        return E("DataField", {"name": field, "optype": "categorical" if values else "continuous",
                               "dataType": "string" if values else "double"}, values)

    def input(self, field):
        """Counts are what the shares of the model are of the category's count."""
        kind, figures = self.inputs[field]
        if kind == "share":
            return table_input(field, self.categories, [
                (value, [shares[c] * self.counts[c] for c in self.categories]) for value, shares in figures.items()])
        densities = [gaussian(figures["mean"][c], figures["deviation"][c] ** 2) for c in self.categories]
        return density_input(field, self.categories, densities)

    def document(self):
        names = list(self.inputs)
        fields = [E("DataField", {"name": self.target, "optype": "categorical", "dataType": "string"},
                    [E("Value", {"value": category}) for category in self.categories])]
        schema = [E("MiningField", {"name": self.target, "usageType": "predicted",
                                    "invalidValueTreatment": "returnInvalid"})]
        schema += [E("MiningField", {"name": name, "usageType": "active", "invalidValueTreatment": "returnInvalid"})
                   for name in names]
        output = [E("OutputField", {"name": "Predicted_" + self.target, "feature": "predictedValue",
                                    "optype": "categorical", "dataType": "string"})]
        output += [E("OutputField", {"name": "Probability_" + category, "feature": "probability", "value": category,
                                     "optype": "continuous", "dataType": "double"}) for category in self.categories]
        model = naive_bayes(self.target, self.threshold, schema, [self.input(name) for name in names], self.categories,
                            [self.counts[category] for category in self.categories], [E("Output", None, output)])
        return pmml("R", fields + [self.fields(name) for name in names], model, version="4.4")

    def answers(self, manner, change):
        document = self.document()
        change(document)
        # R replaces no densities but those that are exactly 0.
        return Answers(f"naiveBayes of {self.name}, {manner}", document, self.cases, self.target, self.categories,
                       self.probabilities, self.predicted, ["--densities", "plain"])


def all_answers():
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run(["Rscript", HERE / "r_models.R", folder], check=True)
        for made in sorted(pathlib.Path(folder).iterdir()):
            model = RModel(made)
            yield model.answers("statistics among the inputs", lambda document: None)
            yield model.answers("statistics in an extension", statistics_in_an_extension)
