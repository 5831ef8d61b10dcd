"""Reports what the benchmarks measured.

    report.py print RESULTS [TITLE]   on the terminal; only the section of this title
    report.py page RESULTS DOCS       as DOCS/benchmarks.md, with its curves in DOCS/benchmarks/
"""

import os
import sys
import textwrap

import curve
import tables
from results import Results

CURVES = {
    "growth_cases": ("Cases in a call", "10 predictors of 8 categories, 2 target categories, codes of 1 byte"),
    "growth_predictors": ("Predictors", "8 categories each, 2 target categories, 10,000 cases, codes of 1 byte"),
    "growth_categories": ("Categories of each predictor",
                          "10 predictors, 2 target categories, 10,000 cases, codes of 2 bytes"),
    "growth_target_categories": ("Target categories", "10 predictors of 8 categories, 10,000 cases, codes of 1 byte"),
    "growth_sub_models": ("Sub-models", "8 predictors of 8 categories each, 1,000 cases, codes of 1 byte"),
}

LOOP = ("The plain loop reads a row, asks `GetScore` and writes the row with its scores, with the readers and writers "
        "that the command has.")
TABLES = {
    "differing": ("differing", f"nearly all of which differ. {LOOP}"),
    "repeating": ("repeating", f"drawn from 20,000 people. {LOOP}"),
    "repeating_long": ("long", "drawn from 20,000 people."),
}


def sections(results):
    """(title, remark, rows)"""
    yield ("Batches beside tight loops",
           "A tight loop is a plain loop of the benchmark's own that knows one shape of model and nothing else, "
           "compiled for this processor alone. It gives the same bits, which the benchmark checks for every case "
           "before it measures; of every 997th case `GetScore` is asked too. Above 1 the batch is the faster one.",
           tables.workloads(results))
    if results.shapes:
        yield ("Batches of shapes drawn at random",
               f"{results.shapes['shapes']} shapes of each kind, drawn from seed {results.shapes['seed']}: 1 to 100 "
               "inputs of 1 to 50 categories, some or no values missing, codes of 1, 2 or 4 bytes, calls of 10 to a "
               "million cases. The loops know the kind of model, its number of target categories or of vectors, and "
               "the width of codes; the same bits are required of them.", tables.shapes(results))
    yield "What the machine can do", "", tables.machine(results)
    yield ("How far scoring could go",
           "For each case of a workload: its operations, the nanoseconds that each kind would take alone at the rates "
           "above, and what a batch takes. Factors are loaded from the first cache where all tables fit it, and else "
           "from the second.", tables.limits(results))
    yield ("One case at a time", "`GetScore` with a filled record and the result of the call before.",
           tables.per_case(results))
    if results.scoring.names("row"):
        yield ("Prepared rows", "A case whose fields are set to texts, all or one, and which is then scored; beside it a "
               "loop for the one shape, to which the categories of all fields are told.", tables.rows(results))
    yield ("Kinds of columns", "10 predictors of 8 categories, 2 target categories, 100,000 cases.",
           tables.columns(results))
    yield ("Threads", "Each thread scores 100,000 cases of 10 predictors at a time. Real time.",
           tables.threads(results))
    for table in results.tables:
        reasons = ", with reasons" if "reasons" in table["ways"] else ""
        yield (f"A table of people: {TABLES[table['table']][0]}{reasons}",
               f"{table['cases']:,} rows of ten columns, {table['bytes'] / 1e6:.0f} MB, {TABLES[table['table']][1]} "
               "Every run is a process of its own, its start and end included; one that writes a file writes a new one "
               "and brings it to the disk. All outputs are compared byte by byte first. Real time.", tables.people(results, table))
    if results.table_shapes:
        yield ("Tables drawn at random",
               f"{results.table_shapes['shapes']} tables of each kind, drawn from seed "
               f"{results.table_shapes['seed']}, from a CSV file to a CSV file; nearly all rows differ. The loop was "
               "written for such tables: it finds cells with vectors, turns each into a code by one look-up, scores "
               "by loops for the shape, and knows no quotes and no faults; it writes numbers as the command does. Its "
               "output is compared byte by byte first. Processor time, the start of the process and loading the "
               "document included. Two threads are compared with one in real time: in all, and without what it takes to "
               "score a single row, which they do not share; the last column is its share of the time on one thread.", tables.table_shapes(results))
        yield ("Other forms of output", "The command on one thread, for the first table of each kind.",
               tables.table_forms(results))
    if results.peers:
        yield ("Beside scikit-learn",
               f"`CategoricalNB` of scikit-learn {results.peers['scikit-learn']} with pandas "
               f"{results.peers['pandas']}, on the same {results.peers['cases']:,} people, fitted on the same counts; "
               "probabilities agree to 1e-9. From file to file the start of Python and its imports are not counted, "
               "that of `nbscore` is. One thread each. Real time.", tables.peers(results))


def introduction(results):
    machine, context = results.machine, results.scoring.context
    words = (f"Measured on {machine['day']} on {machine['processor']}, {machine['cores']} cores, compiled by "
             f"{context['compiler']}. Times are processor time unless it is said otherwise. Each number is the median "
             "of several rounds, in parentheses the least and the greatest; a ratio is taken within a round.")
    if machine["share_in_use"] > 0.1:
        words += (f" **The machine was busy with other things, which used {machine['share_in_use']:.0%} of its cores "
                  "when measuring began, so real times and threads say little here.**")
    return words


def print_table(title, rows):
    print(f"\n{title}")
    widths = [max(map(len, column)) for column in zip(*rows, strict=True)]
    for row in rows:
        print("  " + "  ".join(cell.ljust(width) for cell, width in zip(row, widths, strict=True)).rstrip())


def print_all(results, only=None):
    print(introduction(results).replace("**", ""))
    for title, _, rows in sections(results):
        if only in (None, title):
            print_table(title, rows)
    for group, (title, _) in CURVES.items():
        if only in (None, title):
            rows = [[f"{size:,}", tables.with_spread(spread)] for size, spread in tables.growth(results, group)]
            print_table(title, [["size", "ns a case"], *rows])


def wrap(words):
    return textwrap.fill(words, 120, break_long_words=False, break_on_hyphens=False) + "\n"


def write_page(results, docs):
    folder = os.path.join(docs, "benchmarks")
    os.makedirs(folder, exist_ok=True)
    parts = [
        "# What scoring takes\n",
        "<!-- Generated by `make bench-page` from what `make bench` measured; do not edit. -->\n",
        wrap(introduction(results)),
        "`make bench bench-page` measures again and writes this page; `docs/performance.md` explains the numbers.\n",
    ]
    for title, remark, rows in sections(results):
        parts.append(f"## {title}\n")
        if remark:
            parts.append(wrap(remark))
        parts.append("\n".join("| " + " | ".join(row) + " |" for row in [rows[0], ["---"] * len(rows[0]), *rows[1:]]))
        parts[-1] += "\n"
    parts.append("## Curves\n")
    for group, (title, remark) in CURVES.items():
        points = tables.growth(results, group)
        name = group.removeprefix("growth_") + ".svg"
        with open(os.path.join(folder, name), "w", encoding="utf-8") as out:
            out.write(curve.draw(title, title.lower(), "ns a case", points))
        parts.append(f"{remark}:\n\n![{title}: nanoseconds a case](benchmarks/{name})\n")
    with open(os.path.join(docs, "benchmarks.md"), "w", encoding="utf-8") as out:
        out.write("\n".join(parts))


if __name__ == "__main__":
    if len(sys.argv) in (3, 4) and sys.argv[1] == "print":
        print_all(Results(sys.argv[2]), *sys.argv[3:])
    elif len(sys.argv) == 4 and sys.argv[1] == "page":
        write_page(Results(sys.argv[2]), sys.argv[3])
    else:
        sys.exit(__doc__)
