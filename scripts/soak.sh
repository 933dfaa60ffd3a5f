#!/usr/bin/env bash
# Plays hours of the control center's ticks in fast motion under Wine, and a log that grows while it is shown, and fails
# when the program holds more of the system's objects or memory afterwards. Prints what it held before and after.
#   --hours N  how many are played (default 8, which take between five minutes and half an hour)
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/lib.sh

hours=8
while [ $# -gt 0 ]; do
    case $1 in
        --hours) hours=$2; shift ;;
        *) fail "unknown option $1" ;;
    esac
    shift
done

log=$PWD/build/logs/soak.log
mkdir -p "${log%/*}"
say "building" >&2
{ cmake --preset windows && cmake --build --preset windows --target system_tests; } >"$log" 2>&1 ||
    { tail -n 60 "$log" >&2; fail "cannot build the test"; }
cleanup() { stop_wine; stop_display; }
trap cleanup EXIT
start_display
start_wine "$PWD/build/prefix-soak"
say "playing $hours hours" >&2
BRENNVAR_SOAK_SECONDS=$((hours * 3600)) \
    wine build/windows/tests/system/system_tests.exe --gtest_filter='SoakTest.*' >"$log" 2>&1 </dev/null ||
    { cat "$log" >&2; fail "something is left behind"; }
tr -d '\r' <"$log" | grep ' seconds played: '
