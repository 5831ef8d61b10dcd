#!/bin/sh
# Runs the built benchmarks side by side and prints the ratios with their spread: about five minutes on an idle machine.
# SEED=2 draws other shapes of models and tables than SEED=1 does.
# `run.sh peers` compares with other software instead, on the data of an earlier run, or on new data when there is none.
set -eu
cd "$(dirname "$0")/.."
programs=$PWD/build/bench/bin
results=$PWD/build/bench/results
people=$PWD/build/bench/people
mkdir -p "$results" "$people"

if [ "${1:-}" = peers ]; then
    [ -f "$people/model.pmml" ] || "$programs/table_benchmark" data "$people" 1000000
    # Debian's own interpreter is the one that has its packages.
    rm -f "$results/peers.json"
    /usr/bin/python3 bench/peers/compare.py "$people" "$programs" "${BENCH_ROUNDS:-5}" "$results/peers.json"
    [ ! -f "$results/peers.json" ] || python3 bench/report/report.py print "$results" "Beside scikit-learn"
    exit
fi

# measure NAME FILTER REPETITIONS: in random order, so that a machine that gets slower slows down all alike.
measure() {
    "$programs/scoring_benchmark" --benchmark_filter="$2" --benchmark_repetitions="$3" --benchmark_min_time=0.05 \
        --benchmark_enable_random_interleaving=true --benchmark_display_aggregates_only=true \
        --benchmark_out="$results/$1.json" --benchmark_out_format=json >"$results/$1.txt" 2>&1 || {
        cat "$results/$1.txt" >&2
        exit 1
    }
}

rm -f "$results/peers.json"
python3 bench/report/machine.py "$results/machine.json"
measure workloads '^workload' "${BENCH_ROUNDS:-11}"
measure scoring '^(per_case|columns|growth|machine)' "${BENCH_ROUNDS:-7}"
"$programs/shape_benchmark" "${SEED:-1}" "${BENCH_SHAPES:-20}" "$results/shapes.json" >"$results/shapes.txt"
"$programs/table_benchmark" measure "$people" "${BENCH_ROUNDS:-5}" "$results/tables.json" >"$results/tables.txt"
"$programs/table_benchmark" shapes "$results/drawn" "${SEED:-1}" "${BENCH_TABLE_SHAPES:-5}" "${BENCH_ROUNDS:-3}" \
    "$results/table_shapes.json" >"$results/table_shapes.txt"
rm -rf "$results/drawn"
python3 bench/report/report.py print "$results"
