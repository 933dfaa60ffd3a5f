#!/usr/bin/env bash
# Installs what building and testing need on Debian 12, and makes what is slow to make once: the Windows flavours of
# GoogleTest, libpng, libjpeg-turbo and libzip, and a template Wine prefix. Safe to run twice: a second run only checks.
# Everything made here lies in the cache folder (BRENNVAR_CACHE, default ~/.cache/brennvar), not in the build folder.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/lib.sh

packages=(
    ca-certificates git make cmake ninja-build ccache g++ procps
    g++-mingw-w64-x86-64-posix                      # the Windows compiler
    libpng-dev libjpeg62-turbo-dev zlib1g-dev       # the picture libraries of the host flavour
    libzip-dev                                      # rule archives, host flavour
    libz-mingw-w64-dev dpkg-dev                     # for those of the Windows flavour: zlib, and building the others
    googletest libgtest-dev libbenchmark-dev        # googletest: the sources for the Windows flavour
    clang clang-format clang-tidy libclang-rt-14-dev # fuzzing and checks
    wine wine64 fonts-wine fonts-open-sans          # running the Windows flavour
    xvfb x11-utils imagemagick                      # a display without a screen, and pictures of it
)
# Real programs that the tests of tests/peers hold ours against. None of them runs as a service of this machine.
peer_packages=(
    python3 python3-aiosmtpd exim4-daemon-light     # mail servers, and what reads the mail back
    tinyproxy squid microsocks dante-server curl    # proxies, and the client that shows how others take them
    iproute2 traceroute                             # networks of our own, and the routes through them
    zip unzip p7zip-full libarchive-tools           # archives
)
# Those of them that would run as a service from the next start of the machine on.
declare -A services=([exim4-daemon-light]=exim4 [tinyproxy]=tinyproxy [squid]=squid [dante-server]=danted)

root=()     # what goes before a command that needs root
install_packages() {
    local missing=() p
    for p in "${packages[@]}" "${peer_packages[@]}"; do
        [ "$(dpkg-query -W -f '${db:Status-Abbrev}' "$p" 2>/dev/null)" = "ii " ] || missing+=("$p")
    done
    [ ${#missing[@]} -eq 0 ] && return
    say "installing ${missing[*]}"
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || fail "not root and no sudo: install ${missing[*]} by hand"
        root=(sudo)
    fi
    "${root[@]}" apt-get update -q
    keep_daemons_from_starting
    "${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends --no-remove "${missing[@]}" ||
        fail "cannot install ${missing[*]}; where another mail server is installed, it stays"
    for p in "${missing[@]}"; do
        [ -z "${services[$p]:-}" ] || "${root[@]}" update-rc.d "${services[$p]}" disable >/dev/null 2>&1 || true
    done
    let_daemons_start
}

# Packages of daemons start them when they are installed, unless this file says 101 ("action forbidden by policy"). One
# that is there already is the owner's and stays as it is.
policy=/usr/sbin/policy-rc.d own_policy=
keep_daemons_from_starting() {
    [ ! -e "$policy" ] && [ ! -L "$policy" ] || return 0
    trap let_daemons_start EXIT
    own_policy=yes
    printf '#!/bin/sh\nexit 101\n' | "${root[@]}" tee "$policy" >/dev/null
    "${root[@]}" chmod 755 "$policy"
}
let_daemons_start() {
    [ -n "$own_policy" ] || return 0
    "${root[@]}" rm -f "$policy"
    own_policy=
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

# An apt of our own in the folder $1 for the source packages of this Debian release, to be used with "-c $1/options"; the
# user's apt files stay as they are. The mirrors are those from which the user's apt takes its packages, their keys
# come from trusted.gpg.d. Needs no root.
prepare_source_apt() {
    local own=$1 codename
    codename=$(. /etc/os-release && echo "$VERSION_CODENAME")
    mkdir -p "$own/lists/partial" "$own/cache/archives/partial" "$own/parts"
    # The code name of a suite is known only where apt has been updated, hence the look at the suite's own name as well.
    apt-get indextargets --format '$(REPO_URI)|$(RELEASE)|$(CODENAME)|$(COMPONENT)' 'Created-By: Packages' | sort -u |
        awk -F'|' -v c="$codename" 'index($2, c) == 1 || index($3, c) == 1 { print "deb-src", $1, $2, $4 }' \
            >"$own/sources.list"
    [ -s "$own/sources.list" ] || fail "apt knows no mirror of $codename"
    cat >"$own/options" <<END
Dir::Etc::SourceList "$own/sources.list";
Dir::Etc::SourceParts "$own/parts";
Dir::State::Lists "$own/lists";
Dir::Cache "$own/cache";
Debug::NoLocking "true";
APT::Sandbox::User "$(id -un)";
END
    apt-get -c "$own/options" update -qq
}

# fetch_source PACKAGE VERSION FOLDER: unpacks a Debian source package, with Debian's patches, into FOLDER/source and
# prints the version that it got. A mirror may not have VERSION any more, and may list one that it does not have yet:
# then the newest that it has is taken.
fetch_source() {
    local package=$1 wanted=$2 folder=$3 version versions
    versions=$(apt-cache -c "$folder/apt/options" --only-source showsrc "$package" |
        awk '$1 == "Version:" { print $2 }' | sort -Vru)
    for version in "$wanted" $versions; do
        (cd "$folder" && apt-get -c "$folder/apt/options" source -qq --download-only "$package=$version") \
            >"$folder/log" 2>&1 || continue
        # apt has checked the files against the signed list.
        dpkg-source --no-check -x "$folder/${package}_${version#*:}.dsc" "$folder/source" >"$folder/log" 2>&1 ||
            { cat "$folder/log" >&2; return 1; }
        echo "$version"
        return
    done
    cat "$folder/log" >&2
    return 1
}

# build_library SOURCE_PACKAGE HOST_PACKAGE OPTIONS...: a static library for Windows from Debian's source package, in
# the version that HOST_PACKAGE was built from on the host. For size, and so that the program takes of it only what it
# calls. Other options make another library.
build_library() {
    local package=$1 version options; version=$(dpkg-query -W -f '${source:Version}' "$2"); shift 2
    set -- "$@" '-DCMAKE_C_FLAGS_RELEASE=-Os -DNDEBUG -ffunction-sections -fdata-sections'
    options=$(printf '%s\n' "$@" | cksum)
    local stamp=$DEPS_PREFIX/$package-${version#*:}-${options%% *}.done
    [ -e "$stamp" ] && return
    say "building $package $version for Windows"
    local work got; work=$(mktemp -d)
    prepare_source_apt "$work/apt"
    got=$(fetch_source "$package" "$version" "$work") || fail "cannot fetch the sources of $package"
    [ "$got" = "$version" ] || say "the mirror does not have that version: taking $got"
    if ! { cmake -S "$work/source" -B "$work/build" -G Ninja -DCMAKE_BUILD_TYPE=Release \
            -DCMAKE_TOOLCHAIN_FILE="$PWD/cmake/mingw-w64.cmake" \
            -DCMAKE_INSTALL_PREFIX="$DEPS_PREFIX" -DCMAKE_INSTALL_LIBDIR="$DEPS_PREFIX/lib" "$@" &&
        cmake --build "$work/build" && cmake --install "$work/build"; } >"$work/log" 2>&1; then
        tail -n 60 "$work/log" >&2
        fail "cannot build $package"
    fi
    rm -rf "$work"
    echo "$got" >"$stamp"
}

# A fresh Wine prefix takes some ten seconds to make and under two to copy: one template serves every run.
make_prefix_template() {
    # Wine keeps in a prefix which fonts it has found.
    local stamp; stamp=$PREFIX_TEMPLATE/.brennvar-ready-$(cat scripts/desktop.reg scripts/fonts.conf | cksum | cut -d' ' -f1)
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
build_library libpng1.6 libpng-dev -DPNG_SHARED=OFF -DPNG_TESTS=OFF -DPNG_EXECUTABLES=OFF
# Pictures of a skin are small and decoded once: the tables of the fast routines would be most of the program's share.
# Nor does its memory follow the environment (NO_GETENV).
build_library libjpeg-turbo libjpeg62-turbo-dev -DENABLE_SHARED=OFF -DWITH_TURBOJPEG=OFF -DWITH_SIMD=OFF \
    -DCMAKE_C_FLAGS=-DNO_GETENV
# Rule archives need deflate alone, which is zlib's; nothing of the archives is enciphered.
build_library libzip libzip-dev -DBUILD_SHARED_LIBS=OFF -DBUILD_TOOLS=OFF -DBUILD_REGRESS=OFF -DBUILD_EXAMPLES=OFF \
    -DBUILD_DOC=OFF -DENABLE_COMMONCRYPTO=OFF -DENABLE_GNUTLS=OFF -DENABLE_MBEDTLS=OFF -DENABLE_OPENSSL=OFF \
    -DENABLE_WINDOWS_CRYPTO=OFF -DENABLE_BZIP2=OFF -DENABLE_LZMA=OFF -DENABLE_ZSTD=OFF
make_prefix_template
