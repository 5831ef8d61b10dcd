#!/usr/bin/env bash
# Runs the built fuzzers, one after another, and fails with the first fault that one of them finds.
#
#   run.sh regressions              every kept regression once, then so many fresh inputs a fuzzer as a minute or two allow
#   run.sh SECONDS [FUZZER...]      each fuzzer so long; what it learns stays in build/fuzz/corpus and is used next time
#
# An input that is a fault is left in build/fuzz/faults/FUZZER.
set -euo pipefail
cd "$(dirname "$0")/.."

all_fuzzers=(documents tables expressions commands)
# Whole paths, because a fuzzer may work in a folder of its own.
programs=$PWD/build/asan/bin
work=$PWD/build/fuzz
regressions=$PWD/fuzz/regressions
fresh_runs=20000
fresh_seconds=20

declare -A longest=([documents]=32768 [tables]=4096 [expressions]=1024 [commands]=300)
# Rating what each input of a large corpus has reached takes a third of the time where so much code is reached.
declare -A entropic=([documents]=0)
declare -A dictionary=([documents]=pmml [tables]=tables [commands]=commands)

# What a fuzzer starts with: the examples, the small case files, and documents with one of everything.
write_seeds() {
    local fuzzer=$1 seeds=$2 document table choices words
    rm -rf "$seeds"
    mkdir -p "$seeds"
    case $fuzzer in
        documents)
            for document in examples/*/*.pmml tests/cases/*/document.pmml tests/faults/documents/*.pmml \
                fuzz/seeds/documents/*.pmml; do
                [ "$(stat -c %s "$document")" -gt 16384 ] || cp "$document" "$seeds/${document//\//_}"
            done
            ;;
        tables)
            for table in examples/*/*.csv; do
                for choices in - i o s p j oj ol olbb n nu nj np 'n m' 'i m' aemd\; ; do
                    { echo "$choices"; cat "$table"; } >"$seeds/${table//\//_}_$choices"
                done
            done
            ;;
        commands)
            for words in 'score m t' 'score m t --rule standard --summary x' 'display m --rule standard' \
                'check m --rule standard' 'score o t --allow-missing-fields --long' 'check m o --format json' 'display m' \
                'verify m' 'verify m --format json' 'score m t -o x' 'score --help' 'score m t --delimiter ; --bad-values missing'; do
                tr ' ' '\0' <<<"$words" | tr -d '\n' >"$seeds/${words//[^a-z]/_}"
            done
            ;;
    esac
}

# run FUZZER FOLDER... [-OPTION...]: the libFuzzer options that hold for every run come on top.
run() {
    local fuzzer=$1
    shift
    mkdir -p "$work/faults/$fuzzer"
    ASAN_OPTIONS=detect_leaks=1:strict_string_checks=1 UBSAN_OPTIONS=print_stacktrace=1 \
        "$programs/fuzz_$fuzzer" -timeout=25 -rss_limit_mb=2560 -max_len="${longest[$fuzzer]}" -len_control=0 \
        -artifact_prefix="$work/faults/$fuzzer/" -print_final_stats=1 -entropic="${entropic[$fuzzer]:-1}" \
        ${dictionary[$fuzzer]:+-dict="fuzz/dictionaries/${dictionary[$fuzzer]}.txt"} "$@"
}

run_regressions() {
    local fuzzer fresh
    for fuzzer in "${all_fuzzers[@]}"; do
        echo "== $fuzzer: regressions"
        run "$fuzzer" "$regressions/$fuzzer" -runs=0 2>&1 | quietly
        echo "== $fuzzer: fresh inputs"
        write_seeds "$fuzzer" "$work/seeds/$fuzzer"
        fresh=$(mktemp -d)
        run "$fuzzer" "$fresh" "$work/seeds/$fuzzer" "$regressions/$fuzzer" \
            -runs="$fresh_runs" -max_total_time="$fresh_seconds" -verbosity=0 2>&1 | quietly
        rm -rf "$fresh"
    done
    echo "fuzz: no faults"
}

# The whole output for a fault, else only the totals at the end.
quietly() {
    grep -avE '^(INFO|#|Done|Dictionary|"|	NEW_FUNC|Element DerivedField not found|The element is|stat::(new_units|slowest|average))|^$' || true
}

run_long() {
    local seconds=$1 fuzzer
    shift
    [ $# -gt 0 ] || set -- "${all_fuzzers[@]}"
    for fuzzer in "$@"; do
        echo "== $fuzzer: $seconds s"
        write_seeds "$fuzzer" "$work/seeds/$fuzzer"
        mkdir -p "$work/corpus/$fuzzer"
        run "$fuzzer" "$work/corpus/$fuzzer" "$work/seeds/$fuzzer" "$regressions/$fuzzer" -max_total_time="$seconds"
    done
}

case ${1:-} in
    regressions) run_regressions ;;
    [1-9]*) run_long "$@" ;;
    *) sed -n '2,/^$/p' "$0" >&2; exit 2 ;;
esac
