"""What the benchmarks measured, as ratios and rates with their spread."""

import collections
import json
import os

Spread = collections.namedtuple("Spread", "least median greatest")


def spread_of(values):
    ordered = sorted(values)
    return Spread(ordered[0], ordered[len(ordered) // 2], ordered[-1])


def ratios_of(numerators, denominators):
    """Of measurements taken in the same round of one run."""
    return spread_of([one / other for one, other in zip(numerators, denominators, strict=True)])


class Scoring:
    """What Google Benchmark wrote. Rates are cases per second of processor time, which other programs disturb less;
    with threads, of real time."""

    def __init__(self, files):
        self.context = None
        self.rates = {}
        self.allocations = {}
        for file in files:
            with open(file, encoding="utf-8") as text:
                loaded = json.load(text)
            self.context = self.context or loaded["context"]
            for run in loaded["benchmarks"]:
                if run["run_type"] == "iteration":
                    self._add(run)

    def _add(self, run):
        name = run["name"]
        rate = run.get("items_per_second", run.get("bytes_per_second"))
        self.rates.setdefault(name, []).append((run["repetition_index"], rate))
        if "allocations" in run:
            self.allocations[name] = run["allocations"]

    def names(self, group):
        return [name for name in self.rates if name.split("/")[0] == group]

    def rates_of(self, name):
        """By repetition."""
        return [rate for _, rate in sorted(self.rates[name])]

    def nanoseconds_of(self, name):
        return spread_of([1e9 / rate for rate in self.rates_of(name)])


def load_if_there(file):
    if not os.path.exists(file):
        return None
    with open(file, encoding="utf-8") as text:
        return json.load(text)


class Results:
    def __init__(self, folder):
        self.scoring = Scoring([os.path.join(folder, name) for name in ("workloads.json", "scoring.json")])
        with open(os.path.join(folder, "tables.json"), encoding="utf-8") as text:
            self.tables = json.load(text)
        with open(os.path.join(folder, "machine.json"), encoding="utf-8") as text:
            self.machine = json.load(text)
        self.shapes = load_if_there(os.path.join(folder, "shapes.json"))
        self.table_shapes = load_if_there(os.path.join(folder, "table_shapes.json"))
        self.peers = load_if_there(os.path.join(folder, "peers.json"))
