#!/usr/bin/env bash
# Installs what is missing, builds host and Windows flavours and runs every test. Ends with one line that counts
# them. Options: --no-setup skips the set-up script.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/lib.sh
[ "${1:-}" = "--no-setup" ] || scripts/setup.sh

cleanup() { stop_wine; stop_display; }
trap cleanup EXIT

for preset in host windows; do
    say "building $preset"
    cmake --preset "$preset" >/dev/null
    cmake --build --preset "$preset"
done
