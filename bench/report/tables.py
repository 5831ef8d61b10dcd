"""The tables of what was measured, each a list of rows of texts, headings first."""

from results import ratios_of, spread_of

# For each case: multiplications, divisions, and what is read and written of the caller's memory: codes of one byte, and
# a position, a confidence and probabilities, or scores.
WORKLOADS = {
    "workload_a": ("(a) 10 predictors, 2 target categories, 1,000,000 cases", 10 * 2, 2, 10, 4 + 8 + 2 * 8),
    "workload_b": ("(b) 50 predictors, 20 target categories, 1,000,000 cases", 50 * 20, 20, 50, 4 + 8 + 20 * 8),
    "workload_c": ("(c) 200 sub-models of 8 predictors, 100,000 cases", 200 * 8 * 2, 200, 8, 200 * 8),
}
CATEGORIES = 8
MACHINE = ("multiplications", "divisions", "bytes_read_first_cache", "bytes_read_second_cache", "bytes_read",
           "bytes_written")
WAYS = {
    "command_threads_1": "`nbscore score --threads 1`, file to file",
    "command_threads_2": "`nbscore score --threads 2`, file to file",
    "reasons": "`nbscore score --threads 1 --reasons 3`, file to file",
    "loop": "plain loop, file to file",
    "memory": "batches, file to probabilities in memory",
    "memory_loop": "plain loop, file to probabilities in memory",
}


def with_spread(spread, digits=2):
    return f"{spread.median:,.{digits}f} ({spread.least:,.{digits}f} to {spread.greatest:,.{digits}f})"


def millions(rates):
    return f"{spread_of(rates).median / 1e6:,.2f}"


def workloads(results):
    rows = [["workload", "million cases/s, batch", "million cases/s, tight loop", "batch : tight loop"]]
    for name, (title, *_) in WORKLOADS.items():
        batch = results.scoring.rates_of(name + "/batch")
        loop = results.scoring.rates_of(name + "/tight_loop")
        rows.append([title, millions(batch), millions(loop), with_spread(ratios_of(batch, loop))])
    return rows


def shapes(results):
    rows = [["shapes", "batch : loop, median", "worst", "the worst"]]
    for found in results.shapes["classes"]:
        rows.append([found["name"], f"{found['median']:.2f}", f"{found['worst']:.2f}", found["worst_shape"]])
    return rows


def table_shapes(results):
    rows = [["tables", "command : loop, median", "worst", "the worst", "two threads : one", "once started",
             "share of the start"]]
    for found in results.table_shapes["classes"]:
        rows.append([found["name"], f"{found['median']:.2f}", f"{found['worst']:.2f}", found["worst_shape"],
                     f"{found['two_threads']:.2f}", f"{found['two_threads_once_started']:.2f}",
                     f"{100 * found['start']:.0f} %"])
    return rows


def table_forms(results):
    rows = [["tables", "form of output", "times as fast as the usual form"]]
    for found in results.table_shapes["classes"]:
        rows += [[found["name"], form, f"{ratio:.2f}"] for form, ratio in found["forms"].items()]
    return rows


def size_of_first_cache(scoring):
    return max((cache["size"] for cache in scoring.context["caches"]
                if cache["level"] == 1 and cache["type"] != "Instruction"), default=0)


def limits(results):
    scoring = results.scoring
    rate = {name: spread_of(scoring.rates_of("machine/" + name)).median for name in MACHINE}
    rows = [["workload", "multiplications", "divisions", "bytes read, written", "ns to multiply", "ns to divide",
             "ns to load factors", "ns to read and write", "ns that a batch takes"]]
    for name, (title, products, quotients, read, written) in WORKLOADS.items():
        fits_first = 8 * products * CATEGORIES <= size_of_first_cache(scoring)
        cache = rate["bytes_read_first_cache" if fits_first else "bytes_read_second_cache"]
        rows.append([
            title.split(" ")[0], f"{products:,}", str(quotients), f"{read}, {written:,}",
            f"{1e9 * products / rate['multiplications']:.2f}", f"{1e9 * quotients / rate['divisions']:.2f}",
            f"{1e9 * 8 * products / cache:.2f}",
            f"{1e9 * (read / rate['bytes_read'] + written / rate['bytes_written']):.2f}",
            with_spread(scoring.nanoseconds_of(name + "/batch")),
        ])
    return rows


def machine(results):
    rows = [["what one core does at the most", "thousand millions a second"]]
    for name in MACHINE:
        rates = [rate / 1e9 for rate in results.scoring.rates_of("machine/" + name)]
        rows.append([name.replace("_", " "), with_spread(spread_of(rates), 1)])
    return rows


def per_case(results):
    rows = [["model", "ns a call", "allocations a call"]]
    for name in sorted(results.scoring.names("per_case")):
        rows.append([name.split("/")[1].replace("_", " "), with_spread(results.scoring.nanoseconds_of(name), 0),
                     f"{results.scoring.allocations[name]:.0f}"])
    return rows


def rows(results):
    scoring = results.scoring
    table = [["model", "what is done", "ns a case", "times the tight loop", "allocations a case"]]
    for name in sorted(scoring.names("row")):
        _, model, work = name.split("/")
        if work == "tight_loop":
            continue
        loop = scoring.rates_of(f"row/{model}/tight_loop")
        table.append([model.replace("_", " "), work.replace("_", " "), with_spread(scoring.nanoseconds_of(name), 0),
                      with_spread(ratios_of(loop, scoring.rates_of(name)), 1), f"{scoring.allocations[name]:.0f}"])
    return table


def columns(results):
    scoring = results.scoring
    fastest = scoring.rates_of("columns/codes_of_1_byte")
    rows = [["columns", "ns a case", "times that of codes of 1 byte"]]
    for name in sorted(scoring.names("columns"), key=lambda name: scoring.nanoseconds_of(name).median):
        rows.append([name.split("/")[1].replace("_", " "), with_spread(scoring.nanoseconds_of(name), 1),
                     with_spread(ratios_of(fastest, scoring.rates_of(name)), 1)])
    return rows


def threads(results):
    scoring = results.scoring
    names = {int(name.split(":")[1]): name for name in scoring.names("growth_threads")}
    alone = scoring.rates_of(names[1])
    return [["threads", "million cases/s, together", "times one thread"]] + [
        [str(count), millions(scoring.rates_of(names[count])),
         with_spread(ratios_of(scoring.rates_of(names[count]), alone))] for count in sorted(names)]


def growth(results, group):
    """(size, Spread of ns for a case)"""
    return sorted((int(name.split("/")[1]), results.scoring.nanoseconds_of(name))
                  for name in results.scoring.names(group))


def people(results, table):
    has_loop = "loop" in table["ways"]
    rows = [["way", "million cases/s", f"times {'the plain loop' if has_loop else 'one thread'}", "peak MB"]]
    for way, title in WAYS.items():
        if way not in table["ways"]:
            continue
        found = table["ways"][way]
        measure = table["ways"][found["measure"]]["seconds"]
        rates = [table["cases"] / seconds for seconds in found["seconds"]]
        rows.append([title, millions(rates), with_spread(ratios_of(measure, found["seconds"])),
                     f"{spread_of(found['peak_megabytes']).median:.0f}"])
    return rows


def peers(results):
    found = results.peers
    rows = [["what", "million cases/s, here", "million cases/s, scikit-learn", "times scikit-learn"]]
    for what, title in (("columns", "codes in memory to probabilities"), ("file_to_file", "CSV file to CSV file")):
        ours, theirs = found["seconds"][what]["ours"], found["seconds"][what]["theirs"]
        rows.append([title, millions([found["cases"] / seconds for seconds in ours]),
                     millions([found["cases"] / seconds for seconds in theirs]),
                     with_spread(ratios_of(theirs, ours), 1)])
    return rows
