#!/usr/bin/env bash
# Installs what building and testing need on Debian 12, and makes what is slow to make once:
# the GoogleTest of the Windows flavour and a template Wine prefix. Safe to run twice: a second run only checks.
# Everything made here lies in the cache folder (BRENNVAR_CACHE, default ~/.cache/brennvar), not in the build folder.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/lib.sh

packages=(
    ca-certificates git make cmake ninja-build g++ procps
    g++-mingw-w64-x86-64-posix                      # the Windows compiler
    googletest libgtest-dev libbenchmark-dev        # googletest: the sources for the Windows flavour
    clang clang-format clang-tidy libclang-rt-14-dev # fuzzing and checks
    wine wine64 fonts-wine fonts-open-sans          # running the Windows flavour
    xvfb x11-utils imagemagick                      # a display without a screen, and pictures of it
)

install_packages() {
    local missing=() p
    for p in "${packages[@]}"; do
        [ "$(dpkg-query -W -f '${db:Status-Abbrev}' "$p" 2>/dev/null)" = "ii " ] || missing+=("$p")
    done
    [ ${#missing[@]} -eq 0 ] && return
    say "installing ${missing[*]}"
    local root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || fail "not root and no sudo: install ${missing[*]} by hand"
        root=(sudo)
    fi
    "${root[@]}" apt-get update -q
    "${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends "${missing[@]}"
}

# GoogleTest for Windows, from the sources that the Debian package installs.
build_googletest() {
    local version; version=$(dpkg-query -W -f '${Version}' googletest)
    local stamp=$DEPS_PREFIX/googletest-$version.done
    [ -e "$stamp" ] && return
    say "building GoogleTest $version for Windows"
    local work; work=$(mktemp -d)
    cmake -S /usr/src/googletest -B "$work" -G Ninja -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_TOOLCHAIN_FILE="$PWD/cmake/mingw-w64.cmake" -DCMAKE_INSTALL_PREFIX="$DEPS_PREFIX" -DBUILD_GMOCK=OFF >/dev/null
    cmake --build "$work" >/dev/null
    cmake --install "$work" >/dev/null
    rm -rf "$work"
    touch "$stamp"
}

# A fresh Wine prefix takes some ten seconds to make and under two to copy: one template serves every run.
make_prefix_template() {
    local stamp=$PREFIX_TEMPLATE/.brennvar-ready
    [ -e "$stamp" ] && return
    say "making the template Wine prefix"
    rm -rf "$PREFIX_TEMPLATE"
    mkdir -p "$(dirname "$PREFIX_TEMPLATE")"
    export WINEPREFIX=$PREFIX_TEMPLATE
    env -u DISPLAY wineboot -i >/dev/null 2>&1 </dev/null
    wineserver -w
    # The system's own font files, without which captions and menus show wrong glyphs; see scripts/desktop.reg.
    cp /usr/share/wine/fonts/*.ttf "$PREFIX_TEMPLATE/drive_c/windows/Fonts/"
    env -u DISPLAY wine regedit /S scripts/desktop.reg >/dev/null 2>&1 </dev/null
    wineserver -w
    touch "$stamp"
}

mkdir -p "$CACHE"
exec 9>"$CACHE/.setup.lock" && flock 9      # two runs at once would make the same things twice
install_packages
build_googletest
make_prefix_template
