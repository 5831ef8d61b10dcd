"""Measures the Python package against the batch engine in C++, scikit-learn, and the cost of a call.

    frames.py BATCH_COLUMNS RESULTS.json [CASES] [ROUNDS]

BATCH_COLUMNS is the built program of that name. The models are drawn: ten inputs, and three categories of the target.
Every round measures one after the other what is compared, so that what the machine does meanwhile hits all of them.
"""

import json
import pathlib
import statistics
import subprocess
import sys
import tempfile
import time

import numpy as np
import pandas as pd

import nbscore

INPUTS = 10
CATEGORIES = [f"category {i}" for i in range(8)]
CUTPOINTS = [float(i) for i in range(1, 8)]
CLASSES = ["a", "b", "c"]


def write_counts(chance):
    return "".join(f'<TargetValueCount value="{name}" count="{chance.integers(1, 500)}"/>' for name in CLASSES)


def write_input(name, binned, chance):
    def count(value):
        return f'<PairCounts value="{value}"><TargetValueCounts>{write_counts(chance)}</TargetValueCounts></PairCounts>'

    if not binned:
        return f'<BayesInput fieldName="{name}">{"".join(count(value) for value in CATEGORIES)}</BayesInput>'
    edges = ['rightMargin="1"', *(f'leftMargin="{i}" rightMargin="{i + 1}"' for i in range(1, 7)), 'leftMargin="7"']
    bins = "".join(f'<DiscretizeBin binValue="{i}"><Interval closure="openClosed" {edge}/></DiscretizeBin>'
                   for i, edge in enumerate(edges))
    return (f'<BayesInput fieldName="{name}"><DerivedField name="{name}_bin" optype="categorical" dataType="integer">'
            f'<Discretize field="{name}">{bins}</Discretize></DerivedField>'
            f'{"".join(count(i) for i in range(len(edges)))}</BayesInput>')


def write_document(binned, chance):
    names = [f"x{i}" for i in range(INPUTS)]
    kind = 'optype="continuous" dataType="double"' if binned else 'optype="categorical" dataType="string"'
    fields = "".join(f'<DataField name="{name}" {kind}/>' for name in names)
    values = "".join(f'<Value value="{name}"/>' for name in CLASSES)
    roles = "".join(f'<MiningField name="{name}"/>' for name in names)
    inputs = "".join(write_input(name, binned, chance) for name in names)
    return (f'<PMML version="4.4" xmlns="http://www.dmg.org/PMML-4_4"><Header/><DataDictionary>{fields}'
            f'<DataField name="y" optype="categorical" dataType="string">{values}</DataField></DataDictionary>'
            f'<NaiveBayesModel functionName="classification" threshold="0.001"><MiningSchema>{roles}'
            f'<MiningField name="y" usageType="predicted"/></MiningSchema><BayesInputs>{inputs}</BayesInputs>'
            f'<BayesOutput fieldName="y"><TargetValueCounts>{write_counts(chance)}</TargetValueCounts></BayesOutput>'
            '</NaiveBayesModel></PMML>')


def clock(work):
    """Nanoseconds of processor time: all of this runs on one thread."""
    begin = time.process_time_ns()
    work()
    return time.process_time_ns() - begin


class Frames:
    """A frame of one kind, and the same columns as files for the program."""

    def __init__(self, binned, cases, chance, folder):
        self.document = folder / "model.pmml"
        self.document.write_text(write_document(binned, chance), encoding="utf-8")
        self.model = nbscore.load(self.document)
        self.folder = folder
        columns = {}
        for i in range(INPUTS):
            if binned:
                columns[f"x{i}"] = chance.uniform(0, 8, cases)
                columns[f"x{i}"].tofile(folder / f"x{i}.numbers")
            else:
                codes = chance.integers(0, len(CATEGORIES), cases).astype(np.int8)
                columns[f"x{i}"] = pd.Categorical.from_codes(codes, CATEGORIES)
                codes.tofile(folder / f"x{i}.codes")
                (folder / f"x{i}.categories").write_text("\n".join(CATEGORIES) + "\n", encoding="utf-8")
        self.frame = pd.DataFrame(columns)

    def run_program(self, program):
        done = subprocess.run([program, self.document, self.folder, "5"], capture_output=True, text=True, check=True)
        # The first round finds cold memory.
        return statistics.median(map(float, done.stdout.split()[1:]))

    def compare(self, program, rounds, frame):
        self.model.score(frame)
        cpp, python = [], []
        for _ in range(rounds):
            cpp.append(self.run_program(program))
            python.append(statistics.median(clock(lambda: self.model.score(frame)) for _ in range(4)))
        return {"cpp_ns_per_case": statistics.median(cpp) / len(frame),
                "python_ns_per_case": statistics.median(python) / len(frame),
                "ratio": statistics.median(p / c for p, c in zip(python, cpp))}


def measure_calls(model):
    case = {f"x{i}": CATEGORIES[i % 8] for i in range(INPUTS)}
    row = model.prepare(*case)
    values = list(case.values())
    count = 20_000
    results = {}
    for name, call in (("score_case_ns", lambda: [model.score_case(case) for _ in range(count)]),
                       ("prepared_ns", lambda: [row.score(*values) for _ in range(count)])):
        call()
        results[name] = min(clock(call) for _ in range(7)) / count
    return results


def measure_peer(frames, rounds):
    try:
        from sklearn.naive_bayes import CategoricalNB
    except ImportError:
        return None
    codes = np.column_stack([frames.frame[name].cat.codes for name in frames.frame]).astype(np.int64)
    peer = CategoricalNB().fit(codes[:1000], np.random.default_rng(1).integers(0, 3, 1000))
    ours = min(clock(lambda: frames.model.predict_proba(frames.frame)) for _ in range(rounds))
    theirs = min(clock(lambda: peer.predict_proba(codes)) for _ in range(rounds))
    return {"ours_ns_per_case": ours / len(codes), "theirs_ns_per_case": theirs / len(codes), "times": theirs / ours}


def measure_start():
    """What importing costs over the interpreter's own start, in milliseconds."""
    def start(code):
        begin = time.perf_counter_ns()
        subprocess.run([sys.executable, "-c", code], check=True)
        return time.perf_counter_ns() - begin

    pairs = [(start("pass"), start("import nbscore")) for _ in range(31)]
    return statistics.median(with_it - without for without, with_it in pairs) / 1e6


def main():
    program, results = sys.argv[1:3]
    cases = int(sys.argv[3]) if len(sys.argv) > 3 else 1_000_000
    rounds = int(sys.argv[4]) if len(sys.argv) > 4 else 7
    chance = np.random.default_rng(20240701)
    found = {"cases": cases, "inputs": INPUTS, "import_ms": measure_start()}
    with tempfile.TemporaryDirectory() as first, tempfile.TemporaryDirectory() as second:
        texts = Frames(False, cases, chance, pathlib.Path(first))
        found["categorical"] = texts.compare(program, rounds, texts.frame)
        found["object"] = texts.compare(program, rounds, texts.frame.astype(object))
        numbers = Frames(True, cases, chance, pathlib.Path(second))
        found["float"] = numbers.compare(program, rounds, numbers.frame)
        found.update(measure_calls(texts.model))
        found["scikit_learn"] = measure_peer(texts, rounds)
    pathlib.Path(results).write_text(json.dumps(found, indent=1) + "\n", encoding="utf-8")
    print(json.dumps(found, indent=1))


if __name__ == "__main__":
    main()
