#!/usr/bin/env bash
# Installs what is missing, builds the host and the Windows flavour and runs every test: unit tests on the host
# under sanitizers, the same under Wine, the system tests, and the fuzz targets for a few seconds each.
# Ends with one line that counts them: "tests: N passed, N failed".
#   --no-setup       skip the set-up script
#   --fuzz-seconds N how long each fuzz target runs (default 3)
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/lib.sh

setup=yes fuzz_seconds=3
while [ $# -gt 0 ]; do
    case $1 in
        --no-setup) setup= ;;
        --fuzz-seconds) fuzz_seconds=$2; shift ;;
        *) fail "unknown option $1" ;;
    esac
    shift
done
[ -z "$setup" ] || scripts/setup.sh

passed=0 failed=0
logs=$PWD/build/logs
mkdir -p "$logs"
cleanup() { stop_wine; stop_display; }
trap cleanup EXIT

# build PRESET
build() {
    say "building $1"
    cmake --preset "$1" >"$logs/configure-$1.log" || { cat "$logs/configure-$1.log"; fail "cannot configure $1"; }
    cmake --build --preset "$1" >"$logs/build-$1.log" || { tail -n 60 "$logs/build-$1.log"; fail "cannot build $1"; }
}

# run_ctest TITLE PRESET [OPTIONS]: runs the tests of one flavour and adds them to the counts.
run_ctest() {
    local title=$1 preset=$2 log; shift 2
    log=$logs/$title.log
    say "running $title tests"
    ctest --test-dir "build/$preset" --output-on-failure --no-tests=error "$@" >"$log" 2>&1 </dev/null || true
    local line; line=$(grep -E '^[0-9]+% tests passed, [0-9]+ tests failed out of [0-9]+' "$log" || true)
    if [ -z "$line" ]; then
        tail -n 40 "$log"
        failed=$((failed + 1))
        return
    fi
    local bad all
    bad=$(sed -E 's/.* ([0-9]+) tests failed out of ([0-9]+)/\1/' <<<"$line")
    all=$(sed -E 's/.* ([0-9]+) tests failed out of ([0-9]+)/\2/' <<<"$line")
    passed=$((passed + all - bad)) failed=$((failed + bad))
    [ "$bad" -eq 0 ] || grep -vE '^ *[0-9]+/[0-9]+ Test .* Passed|^ +Start +[0-9]+:' "$log"
    echo "$title: $((all - bad)) of $all passed"
}

# Each fuzz target starts from its committed corpus; what it finds anew stays in the build folder.
run_fuzz_targets() {
    say "running fuzz targets for $fuzz_seconds s each"
    local target name corpus
    for target in build/fuzz/tests/fuzz/*_fuzz; do
        name=$(basename "$target")
        corpus=build/fuzz/found/$name
        mkdir -p "$corpus"
        if "$target" -max_total_time="$fuzz_seconds" -artifact_prefix="$logs/$name-" -print_final_stats=0 \
            "$corpus" "tests/fuzz/corpus/${name%_fuzz}" >"$logs/$name.log" 2>&1; then
            passed=$((passed + 1))
        else
            failed=$((failed + 1))
            tail -n 40 "$logs/$name.log"
            echo "$name failed; the input lies in build/logs"
        fi
    done
}

say "checking the layout of the sources"
mapfile -t sources < <(git ls-files '*.cpp' '*.h')
clang-format --dry-run -Werror "${sources[@]}"

for preset in host windows fuzz; do build "$preset"; done
run_ctest host host -j2
start_display
start_wine "$PWD/build/prefix"
run_ctest windows-unit windows -j2 -L unit
run_ctest system windows -L system
run_fuzz_targets

echo "tests: $passed passed, $failed failed"
[ "$failed" -eq 0 ]
