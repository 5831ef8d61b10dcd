#!/usr/bin/env python3
"""Holds the command's answers to those of R and scikit-learn, for models that these fit to data that they ship.

    peers.py NBSCORE       scores with the command
    peers.py --witness     scores with the witness in tests/witness, which shows that it is right itself
"""
import csv
import io
import pathlib
import subprocess
import sys
import tempfile

WITNESS = pathlib.Path(__file__).resolve().parent.parent / "witness"
sys.path.insert(0, str(WITNESS))  # for the modules that follow

import r_models
import scikit_models
from elements import write

TOLERANCE = 1e-12
# Below it doubles have fewer digits.
SMALLEST = 1e-290


def score(arguments):
    run = subprocess.run(arguments, capture_output=True, encoding="utf-8", check=False)
    if run.returncode != 0:
        raise RuntimeError(f"{arguments}: exit status {run.returncode}: {run.stderr}")
    return list(csv.DictReader(io.StringIO(run.stdout)))


def score_with_command(command, answers, path, table):
    return score([command, "score", "--rule", "standard", "--only-scores", "--columns", "usual", *answers.options, path,
                  table])


def score_with_witness(answers, path, table):
    plain = ["--plain"] if "plain" in answers.options else []
    return score([sys.executable, WITNESS / "standard_witness.py", "--usual", *plain, path, table])


def compare(answers, scored):
    """The largest difference, relative to the larger of the two, and how many cases differ too much."""
    largest, differing = 0.0, 0
    if len(scored) != len(answers.probabilities):
        raise RuntimeError(f"{answers.name}: {len(scored)} rows instead of {len(answers.probabilities)}")
    for case, shares, predicted in zip(scored, answers.probabilities, answers.predicted):
        found = [float(case["probability_" + category]) for category in answers.categories]
        differences = [abs(a - b) / max(a, b, SMALLEST) for a, b in zip(found, shares)]
        tied = sorted(shares)[-1] - sorted(shares)[-2] < TOLERANCE
        largest = max(largest, *differences)
        differing += max(differences) > TOLERANCE or (not tied and case["predicted_" + answers.target] != predicted)
    return largest, differing


def main(arguments):
    models, cases, differing = 0, 0, 0
    with tempfile.TemporaryDirectory() as folder:
        path, table = pathlib.Path(folder, "model.pmml"), pathlib.Path(folder, "cases.csv")
        for source in (scikit_models, r_models):
            for answers in source.all_answers():
                write(answers.document, path)
                with open(table, "w", newline="", encoding="utf-8") as stream:
                    csv.writer(stream, lineterminator="\n").writerows(answers.rows)
                scored = (score_with_witness(answers, path, table) if arguments[0] == "--witness"
                          else score_with_command(arguments[0], answers, path, table))
                largest, wrong = compare(answers, scored)
                models, cases, differing = models + 1, cases + len(scored), differing + wrong
                print(f"{answers.name}: {len(scored)} cases, largest difference {largest:.1e}, {wrong} differ")
    print(f"{models} models, {cases} cases, {differing} differ by more than {TOLERANCE}")
    return 1 if differing or not models else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
