"""Compares scoring with scikit-learn's CategoricalNB on the same people, counts and formulas.

    compare.py FOLDER PROGRAMS ROUNDS RESULTS.json

FOLDER holds what `table_benchmark data` wrote, PROGRAMS the built programs. The peer is fitted on the training people
and must give the same probabilities, to 1e-9, before anything is measured. Its time from file to file does not count
the start of Python and its imports; that of the command counts everything.
"""

import json
import os
import pathlib
import subprocess
import sys
import time
import xml.etree.ElementTree as ElementTree

try:
    import numpy
    import pandas
    import sklearn
    from sklearn.naive_bayes import CategoricalNB
except ImportError as missing:
    print(f"bench-peers: skipped, because {missing.name} is not installed")
    sys.exit(0)

TOLERANCE = 1e-9


class Document:
    """What the peer needs of the model: its fields, the cutpoints of its bins, its threshold, the target's counts."""

    def __init__(self, file):
        root = ElementTree.parse(file).getroot()
        namespace = root.tag[: root.tag.index("}") + 1]
        model = root.find(f"{namespace}NaiveBayesModel")
        self.threshold = float(model.get("threshold"))
        self.cutpoints = {}
        self.inputs = []
        for element in model.iter(f"{namespace}BayesInput"):
            name = element.get("fieldName")
            self.inputs.append(name)
            margins = [interval.get("rightMargin") for interval in element.iter(f"{namespace}Interval")]
            if margins:
                self.cutpoints[name] = [float(margin) for margin in margins if margin is not None]
        output = model.find(f"{namespace}BayesOutput")
        self.target = output.get("fieldName")
        self.counts = {count.get("value"): float(count.get("count"))
                       for count in output.iter(f"{namespace}TargetValueCount")}


class Peer:
    def __init__(self, document, training):
        self.document = document
        self.categories = {name: numpy.unique(training[name].to_numpy())
                           for name in document.inputs if name not in document.cutpoints}
        classes = sorted(document.counts)
        smoothed = numpy.array([document.threshold + document.counts[name] for name in classes])
        self.model = CategoricalNB(alpha=document.threshold, class_prior=smoothed / smoothed.sum())
        self.model.fit(self.encode(training), training[document.target])
        self.classes = list(self.model.classes_)

    def encode(self, table):
        columns = []
        for name in self.document.inputs:
            if name in self.document.cutpoints:
                columns.append(numpy.searchsorted(self.document.cutpoints[name], table[name].to_numpy(), side="left"))
            else:
                columns.append(pandas.Categorical(table[name], categories=self.categories[name]).codes)
        return numpy.column_stack(columns).astype(numpy.int64)

    def score_file(self, table_file, output_file):
        table = pandas.read_csv(table_file)
        probabilities = self.model.predict_proba(self.encode(table))
        best = probabilities.argmax(axis=1)
        table["predicted_" + self.document.target] = numpy.array(self.classes)[best]
        table["confidence"] = probabilities.max(axis=1)
        for position, name in enumerate(self.classes):
            table["probability_" + name] = probabilities[:, position]
        table.to_csv(output_file, index=False)


def seconds_of(action):
    start = time.perf_counter()
    action()
    return time.perf_counter() - start


def demand_equal(what, ours, theirs):
    if ours.shape != theirs.shape:
        sys.exit(f"bench-peers: {what}: {ours.shape} answers beside {theirs.shape}")
    difference = float(numpy.abs(ours - theirs).max())
    if not difference <= TOLERANCE:
        sys.exit(f"bench-peers: {what} differ by {difference}")


def main(folder, programs, rounds, results_file):
    document = Document(os.path.join(folder, "model.pmml"))
    model, table_file = os.path.join(folder, "model.pmml"), os.path.join(folder, "differing.csv")
    raw, ours, theirs = (os.path.join(folder, name) for name in ("columns.raw", "ours.csv", "theirs.csv"))

    def score_columns():
        run = subprocess.run([os.path.join(programs, "table_benchmark"), "columns", model, table_file, "1", raw],
                              check=True, capture_output=True, text=True)
        return float(run.stdout)

    def score_file():
        subprocess.run([os.path.join(programs, "nbscore"), "score", model, table_file, "--quiet", "--threads", "1",
                        "-o", ours], check=True)

    peer = Peer(document, pandas.read_csv(os.path.join(folder, "training.csv")))
    codes = peer.encode(pandas.read_csv(table_file))
    expected = peer.model.predict_proba(codes)
    score_columns()
    order = [peer.classes.index(name) for name in document.counts]
    demand_equal("columns", numpy.fromfile(raw).reshape(-1, len(order)), expected[:, order])
    score_file()
    demand_equal("tables", pandas.read_csv(ours)[["probability_" + name for name in peer.classes]].to_numpy(), expected)

    measured = {"columns": {"ours": [], "theirs": []}, "file_to_file": {"ours": [], "theirs": []}}
    for _ in range(rounds):
        # Both write new files, so that the time to delete old ones is not measured.
        for file in (ours, theirs):
            pathlib.Path(file).unlink(missing_ok=True)
        measured["columns"]["ours"].append(score_columns())
        measured["columns"]["theirs"].append(seconds_of(lambda: peer.model.predict_proba(codes)))
        measured["file_to_file"]["ours"].append(seconds_of(score_file))
        measured["file_to_file"]["theirs"].append(seconds_of(lambda: peer.score_file(table_file, theirs)))
    comparison = {"cases": len(codes), "scikit-learn": sklearn.__version__, "pandas": pandas.__version__,
                  "seconds": measured}
    with open(results_file, "w", encoding="utf-8") as out:
        json.dump(comparison, out, indent=1)


if __name__ == "__main__":
    if len(sys.argv) != 5:
        sys.exit(__doc__)
    main(sys.argv[1], sys.argv[2], int(sys.argv[3]), sys.argv[4])
