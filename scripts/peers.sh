#!/usr/bin/env bash
# Holds the network tools, the mail and the archives against programs that others wrote, with the cases that wait for
# real time-outs, too, and prints the closing table: case, peer, outcome. It is kept in build/peers.txt. What needs the
# rights of root goes through sudo where this is not run by root.
#   peers.sh [--no-setup] [FILTER]
#   FILTER    only the cases that it names, as GoogleTest has it ('Whois*', '*Exim*')
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/lib.sh

setup=yes filter=
while [ $# -gt 0 ]; do
    case $1 in
        --no-setup) setup= ;;
        -*) fail "unknown option $1" ;;
        *) filter=$1 ;;
    esac
    shift
done
[ -z "$setup" ] || scripts/setup.sh

say "building"
cmake --preset windows >/dev/null
cmake --build --preset windows --target tool_driver >/dev/null
cleanup() { stop_wine; }
trap cleanup EXIT
start_wine "$PWD/build/prefix-peers"
run_peers --slow ${filter:+"$filter"} </dev/null
