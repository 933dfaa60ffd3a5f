#!/usr/bin/env bash
# Builds and runs the benchmarks and compares them with what the core and the lists must keep up with. One line for each measure:
# name, value, goal, and "ok" or "short". A goal that is missed does not fail the script; only a measure that cannot
# be taken does.
# The core's run on this system, the lists' under Wine on a display of their own.
#   --repetitions N  how often each benchmark runs (default 15, the lists' a third of it); the median counts
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/lib.sh

# name, benchmark, its yardstick, how the value is made of both, goal:
#   speed  the measure's speed as a part of the yardstick's, at least the goal
#   times  the measure's time as a multiple of the yardstick's, at most the goal
#   ms     the measure's time in milliseconds, below the goal; no yardstick
measures='
decipher_rules    DecipherRules   CopyRules      speed  0.7
look_up_rule      LookUpLastRule  ReadRulesFile  times  2.0
read_70_options   ReadAllOptions  -              ms     5
connections       SortAndFormat   SortAlone      times  3.0
'

repetitions=15
while [ $# -gt 0 ]; do
    case $1 in
        --repetitions) repetitions=$2; shift ;;
        *) fail "unknown option $1" ;;
    esac
    shift
done

logs=$PWD/build/logs
mkdir -p "$logs"
say "building bench" >&2
cmake --preset bench >"$logs/configure-bench.log" || { cat "$logs/configure-bench.log" >&2; fail "cannot configure bench"; }
cmake --build --preset bench >"$logs/build-bench.log" || { tail -n 60 "$logs/build-bench.log" >&2; fail "cannot build bench"; }

# Interleaved, so that a measure and its yardstick meet the same state of the machine.
say "running each benchmark $repetitions times" >&2
build/bench/bench/core_bench --benchmark_repetitions="$repetitions" --benchmark_enable_random_interleaving=true \
    --benchmark_report_aggregates_only=true --benchmark_min_time=0.05 \
    --benchmark_out="$logs/bench.csv" --benchmark_out_format=csv >"$logs/bench.log" 2>&1 ||
    { tail -n 40 "$logs/bench.log" >&2; fail "the benchmarks failed"; }

# Columns of the report: name, iterations, real time, processor time, unit, ..., error. Ratios are made of processor
# time, which other work on the machine disturbs least; milliseconds are what a user waits.
awk -v measures="$measures" -F, '
    function milliseconds(value, unit) {
        if (unit == "ns") return value / 1e6
        if (unit == "us") return value / 1e3
        if (unit == "s") return value * 1e3
        return value
    }
    { name = $1; gsub(/"/, "", name) }
    name ~ /_median$/ && $4 + 0 > 0 {
        sub(/_median$/, "", name)
        real[name] = milliseconds($3, $5); cpu[name] = milliseconds($4, $5)
    }
    END {
        count = split(measures, rows, "\n")
        for (i = 1; i <= count; i++) {
            if (split(rows[i], field, " ") == 0) continue
            if (!(field[2] in cpu) || (field[3] != "-" && !(field[3] in cpu))) {
                printf "%-18s not measured\n", field[1]
                missing = 1
                continue
            }
            if (field[4] == "speed") { value = cpu[field[3]] / cpu[field[2]]; ok = value >= field[5]; sign = ">=" }
            else if (field[4] == "times") { value = cpu[field[2]] / cpu[field[3]]; ok = value <= field[5]; sign = "<=" }
            else { value = real[field[2]]; ok = value < field[5]; sign = "<" }
            printf "%-18s  %8.3f %-2s  %-2s %-4s  %s\n", field[1], value, field[4] == "ms" ? "ms" : "x", sign, field[5], ok ? "ok" : "short"
        }
        exit missing
    }' "$logs/bench.csv" || fail "some measures could not be taken"

# The tree control's time as a multiple of the native list view's, in one program that lets them take turns.
say "comparing the lists under Wine" >&2
{ cmake --preset windows && cmake --build --preset windows --target list_bench; } >"$logs/build-list-bench.log" 2>&1 ||
    { tail -n 60 "$logs/build-list-bench.log" >&2; fail "cannot build list_bench"; }
cleanup() { stop_wine; stop_display; }
trap cleanup EXIT
start_display
start_wine "$PWD/build/prefix-bench"
wine build/windows/bench/list_bench.exe $(((repetitions + 2) / 3)) >"$logs/list-bench.log" 2>/dev/null </dev/null ||
    fail "the lists could not be measured"
awk '{ printf "%-18s  %8.3f x   <= 1.0   %s\n", $1, $2, $2 + 0 <= 1.0 ? "ok" : "short" }' <(tr -d '\r' <"$logs/list-bench.log")
