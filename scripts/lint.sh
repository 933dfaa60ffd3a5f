#!/usr/bin/env bash
# Runs clang-tidy over all sources: those that the host compiles (tests, benchmarks and fuzz targets included), and the
# Windows files with MinGW's headers. Slower than the tests: run it before a change is proposed. Arguments: only these
# files.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/lib.sh

# Compile commands without precompiled headers, which only their compiler can read, so that a missing include shows.
presets=(host bench fuzz windows)
for preset in "${presets[@]}"; do
    cmake --preset "$preset" -B "build/lint/$preset" -DBRENNVAR_PCH=OFF >/dev/null || fail "cannot configure $preset"
done

gcc=$(dirname "$(x86_64-w64-mingw32-g++-posix -print-file-name=libgcc.a)")
windows_flags=()
for flag in --target=x86_64-w64-mingw32 -isystem "$gcc/include/c++" -isystem "$gcc/include/c++/x86_64-w64-mingw32" \
    -isystem /usr/x86_64-w64-mingw32/include; do
    windows_flags+=("--extra-arg-before=$flag")
done

files=("$@")
[ ${#files[@]} -gt 0 ] || mapfile -t files < <(git ls-files '*.cpp')
declare -A of_preset=()
for f in "${files[@]}"; do
    for preset in "${presets[@]}"; do
        if grep -qF "/$f\"" "build/lint/$preset/compile_commands.json"; then
            of_preset[$preset]+=$f$'\n'
            continue 2
        fi
    done
    fail "no preset compiles $f"
done
status=0
for preset in "${!of_preset[@]}"; do
    flags=()
    [ "$preset" != windows ] || flags=("${windows_flags[@]}")
    printf '%s' "${of_preset[$preset]}" |
        xargs -d '\n' -P2 -n4 clang-tidy --quiet -p "build/lint/$preset" "${flags[@]}" 2>/dev/null || status=1
done
exit $status
