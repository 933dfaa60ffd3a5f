#!/usr/bin/env bash
# Runs clang-tidy over the sources that the host compiles, and over the Windows files with MinGW's headers.
# Slower than the tests: run it before a change is proposed. Arguments: only these files.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/lib.sh
[ -e build/host/compile_commands.json ] || cmake --preset host >/dev/null
[ -e build/windows/compile_commands.json ] || cmake --preset windows >/dev/null

gcc=$(x86_64-w64-mingw32-g++-posix -dumpversion | sed 's/-posix//')
root=$(dirname "$(x86_64-w64-mingw32-g++-posix -print-file-name=libgcc.a)")
windows_flags=(--target=x86_64-w64-mingw32
    -isystem "$root/include/c++" -isystem "$root/include/c++/x86_64-w64-mingw32"
    -isystem /usr/x86_64-w64-mingw32/include)

files=("$@")
[ ${#files[@]} -gt 0 ] || mapfile -t files < <(git ls-files 'src/*.cpp' 'standin/*.cpp' 'tests/unit/*.cpp')
host=() windows=()
for f in "${files[@]}"; do
    if grep -qF "/$f\"" build/host/compile_commands.json; then host+=("$f"); else windows+=("$f"); fi
done
status=0
[ ${#host[@]} -eq 0 ] || printf '%s\0' "${host[@]}" | xargs -0 -P2 -n4 clang-tidy --quiet -p build/host 2>/dev/null || status=1
extra=(); for flag in "${windows_flags[@]}"; do extra+=("--extra-arg-before=$flag"); done
[ ${#windows[@]} -eq 0 ] || printf '%s\0' "${windows[@]}" | xargs -0 -P2 -n4 clang-tidy --quiet -p build/windows "${extra[@]}" 2>/dev/null || status=1
exit $status
