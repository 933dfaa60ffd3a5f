#!/usr/bin/env bash
# Installs what is missing, builds the host and the Windows flavour and runs every test: unit tests on the host
# under sanitizers, the same under Wine, the system tests, the network tools against real programs, and the fuzz
# targets for a few seconds each.
# Ends with what failed, the names of those cases ("failed: PART Suite.Case"), and one line that counts all of them:
# "tests: N passed, N failed".
#   test.sh [OPTIONS] [host|windows|system|peers|fuzz|reproducible]... [FILTER]
#   host, windows    only the unit tests there, system, peers, fuzz: only those; what the others need is not built
#   reproducible     builds the program a second time, in another folder and without the compiler cache, and compares
#                    what is installed; only when it is asked for, since it takes as long as the first build of a clone
#   FILTER           only the tests that it names, as GoogleTest has it ('PngDecoder*', '*.Survives*:TrayTest.*'), and
#                    the fuzz targets (without _fuzz)
#   --no-setup       skip the set-up script
#   --fuzz-seconds N how long each fuzz target runs (default 3)
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/lib.sh

setup=yes fuzz_seconds=3 parts=() filter=
while [ $# -gt 0 ]; do
    case $1 in
        --no-setup) setup= ;;
        --fuzz-seconds) fuzz_seconds=$2; shift ;;
        -*) fail "unknown option $1" ;;
        host|windows|system|peers|fuzz|reproducible) parts+=("$1") ;;
        *) [ -z "$filter" ] || fail "two filters: $filter and $1"; filter=$1 ;;
    esac
    shift
done
[ -z "$setup" ] || scripts/setup.sh
[ -z "$filter" ] || export GTEST_FILTER=$filter

passed=0 failed=0
logs=$PWD/build/logs
failures=$logs/failures.txt     # what is told last
mkdir -p "$logs"
: >"$failures"
declare -A running=()           # process groups of what runs beside
cleanup() {
    local group
    for group in "${running[@]}"; do kill -- "-$group" 2>/dev/null || true; done
    stop_wine
    stop_display
}
trap cleanup EXIT

# wants PART: whether it is one of those that were asked for; all are when none was named.
wants() { [ ${#parts[@]} -eq 0 ] || [[ " ${parts[*]} " == *" $1 "* ]]; }

# step TEXT: says what begins, and how many minutes and seconds after the start.
step() { say "$(printf '%d:%02d' $((SECONDS / 60)) $((SECONDS % 60))) $*"; }

# build PRESET [TARGETS...]: all of it when no target is named.
build() {
    local preset=$1 target=(); shift
    [ $# -eq 0 ] || target=(--target "$@")
    step "building $preset"
    cmake --preset "$preset" >"$logs/configure-$preset.log" ||
        { cat "$logs/configure-$preset.log"; fail "cannot configure $preset"; }
    cmake --build --preset "$preset" "${target[@]}" >"$logs/build-$preset.log" ||
        { tail -n 60 "$logs/build-$preset.log"; fail "cannot build $preset"; }
}

# run_tests TITLE PRESET [OPTIONS]: runs the test programs of one flavour and adds their cases to the counts. Each
# program is a test of ctest's, and its cases are in its output.
run_tests() { start_tests "$@"; count_tests "$1"; }

# start_tests TITLE PRESET [OPTIONS]: the first half, which leaves them running beside what follows.
start_tests() {
    local title=$1 preset=$2; shift 2
    step "running $title tests"
    setsid ctest --test-dir "build/$preset" --verbose --no-tests=error "$@" >"$logs/$title.log" 2>&1 </dev/null &
    running[$title]=$!
}

# count_tests TITLE: the second half, which waits for their end.
count_tests() {
    local title=$1 log=$logs/$1.log status=0 good bad started ended
    wait "${running[$title]}" || status=$?
    unset "running[$title]"
    good=$(count_cases PASSED "$log")
    bad=$(count_cases FAILED "$log")
    # Each program ends with the number of its passed cases; one that does not has crashed, whatever Wine made of its
    # exit code.
    started=$(grep -c ': Test command: ' "$log" || true)
    ended=$(grep -cE '\[  PASSED  \] [0-9]+ test' "$log" || true)
    if [ "$status" -eq 0 ] && [ "$ended" -lt "$started" ]; then status=1; fi
    if [ "$status" -ne 0 ] || [ "$bad" -gt 0 ]; then
        # A program that crashed or hung has not counted its cases.
        [ "$bad" -gt 0 ] || bad=1
        tail -n 15 "$log"
        tell_failures "$title" "$log"
    fi
    passed=$((passed + good)) failed=$((failed + bad))
    echo "$title: $good passed, $bad failed"
}

# tell_failures TITLE FILE: keeps for the end what has failed in an output of test programs.
tell_failures() {
    local told; told=$(awk -v title="$1" -f scripts/failures.awk "$2")
    [ -n "$told" ] || told="failed: $1 (outside of any case; see build/logs)"
    echo "$told" >>"$failures"
}

# count_cases OUTCOME FILE: the sum of the lines "[  OUTCOME  ] N tests" with which each test program ends.
count_cases() {
    awk -v mark="[  $1  ] " '(at = index($0, mark)) && substr($0, at + length(mark)) ~ /^[0-9]+ tests?/ {
        sum += substr($0, at + length(mark)) + 0 } END { print sum + 0 }' "$2"
}

# The cases against real programs, which are left running; those that wait for real time-outs are left to
# scripts/peers.sh.
start_peer_cases() {
    step "running peers"
    export PREFIX_TEMPLATE
    export -f run_peers
    setsid bash -c 'run_peers "$@"' run_peers ${filter:+"$filter"} >"$logs/peers.log" 2>&1 </dev/null &
    running[peers]=$!
}

# Waits for their end.
count_peer_cases() {
    local log=$logs/peers.log counts
    wait "${running[peers]}" || true
    unset 'running[peers]'
    counts=$(tail -n 1 "$log")
    if [[ $counts =~ ^peers:\ ([0-9]+)\ passed,\ ([0-9]+)\ failed$ ]]; then
        passed=$((passed + BASH_REMATCH[1])) failed=$((failed + BASH_REMATCH[2]))
        if [ "${BASH_REMATCH[2]}" -gt 0 ]; then
            awk '/^(FAIL|ERROR):/ { sub(/^[A-Z]+:/, "failed: peers"); left = 30 } left-- > 0' "$log" >>"$failures"
        fi
    else
        failed=$((failed + 1)) counts="peers: did not come to their end"
        { echo "failed: $counts"; tail -n 30 "$log"; } >>"$failures"
    fi
    echo "$counts"
}

# Side by side, one for each core. Each starts from its committed corpus; what it finds anew stays in the build folder.
run_fuzz_targets() {
    step "running fuzz targets for $fuzz_seconds s each"
    local target name names=() good=0 bad=0
    for target in build/fuzz/tests/fuzz/*_fuzz; do
        name=$(basename "$target")
        # shellcheck disable=SC2053 # a pattern
        [[ -z $filter || ${name%_fuzz} == $filter ]] && names+=("$name")
    done
    export logs fuzz_seconds
    export -f run_fuzz_target
    # xargs tells by its own status that one has failed; which one is read off what each leaves.
    printf '%s\n' "${names[@]}" | xargs -r -P "$(nproc)" -I{} bash -c 'run_fuzz_target {}' || true
    for name in "${names[@]}"; do
        if [ "$(cat "$logs/$name.status")" = 0 ]; then good=$((good + 1)); continue; fi
        bad=$((bad + 1))
        tail -n 40 "$logs/$name.log"
        { echo "failed: fuzz $name; the input lies in build/logs"; grep -m 3 -E 'ERROR|runtime error' "$logs/$name.log"; } \
            >>"$failures" || true
    done
    passed=$((passed + good)) failed=$((failed + bad))
    echo "fuzz: $good passed, $bad failed"
}

run_fuzz_target() {
    local name=$1 corpus=build/fuzz/found/$1 status=0
    mkdir -p "$corpus"
    echo unfinished >"$logs/$name.status"
    "build/fuzz/tests/fuzz/$name" -max_total_time="$fuzz_seconds" -artifact_prefix="$logs/$name-" \
        -print_final_stats=0 "$corpus" "tests/fuzz/corpus/${name%_fuzz}" >"$logs/$name.log" 2>&1 || status=$?
    echo "$status" >"$logs/$name.status"
}

# The sources as they are now, built where paths are longer, by a program that has not seen them before.
check_reproducible() {
    local other=$PWD/build/reproducible/in-a-folder-of-another-name
    step "building the program a second time"
    rm -rf build/reproducible
    mkdir -p "$other"
    git ls-files -z | xargs -0 cp --parents -t "$other"
    (cd "$other" && export CCACHE_DISABLE=1 && cmake --preset windows -DCMAKE_INSTALL_PREFIX="$other/dist" &&
        cmake --build --preset windows --target BrennvarGUI && cmake --install build/windows) >"$logs/reproducible.log" 2>&1 ||
        { tail -n 30 "$logs/reproducible.log"; fail "cannot build a second time"; }
    cmake --install build/windows --prefix "$PWD/build/reproducible/first" >>"$logs/reproducible.log"
    if diff -r build/reproducible/first "$other/dist" >>"$logs/reproducible.log"; then
        passed=$((passed + 1))
        echo "reproducible: the same $(find build/reproducible/first -type f | wc -l) files"
    else
        failed=$((failed + 1))
        { echo "failed: reproducible"; tail -n 5 "$logs/reproducible.log"; } >>"$failures"
    fi
}

# One flavour is built while the tests of another run, which take one core at the most.
if [ ${#parts[@]} -eq 0 ]; then
    step "checking the layout of the sources"
    mapfile -t sources < <(git ls-files '*.cpp' '*.h')
    clang-format --dry-run -Werror "${sources[@]}"
    build host
    start_tests host host
    build windows
    build fuzz
    count_tests host
else
    if wants host; then build host core_tests; fi
    windows=()
    if wants windows; then windows+=(core_tests shell_tests low_resources_tests); fi
    if wants system; then windows+=(system_tests); fi
    if wants peers; then windows+=(tool_driver); fi
    if wants reproducible; then windows+=(BrennvarGUI); fi
    [ ${#windows[@]} -eq 0 ] || build windows "${windows[@]}"
    if wants fuzz; then build fuzz; fi
    if wants host; then run_tests host host; fi
fi

if wants windows || wants system || wants peers; then
    start_display
    start_wine "$PWD/build/prefix"
fi
# The peers take half a core and no desktop: beside them run the unit tests, which take one core, and the fuzz targets.
# The system tests look at the time that the program takes, and run alone.
if wants peers; then start_peer_cases; fi
if wants windows; then run_tests windows-unit windows -j2 -L unit; fi
if wants fuzz; then run_fuzz_targets; fi
if wants peers; then count_peer_cases; fi
if wants system; then run_tests system windows -L system; fi
# Not a part of everything.
if [[ " ${parts[*]} " == *" reproducible "* ]]; then check_reproducible; fi

if [ "$failed" -gt 0 ]; then
    # The names once more by themselves, for a reader of the last lines.
    step "what has failed"
    cat "$failures"
    grep '^failed: ' "$failures" || true
fi
echo "tests: $passed passed, $failed failed"
[ "$failed" -eq 0 ] && [ "$passed" -gt 0 ]
