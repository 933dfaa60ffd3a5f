# Shared by the scripts: places, messages, and Wine handled so that nothing is left running.
# To be sourced with the repository root as the current directory.
CACHE=${BRENNVAR_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/brennvar}
export DEPS_PREFIX=$CACHE/deps
PREFIX_TEMPLATE=$CACHE/prefix
export WINEDEBUG=${WINEDEBUG:--all}
export FONTCONFIG_FILE=$PWD/scripts/fonts.conf
export WINEDLLOVERRIDES="mscoree,mshtml="       # no pop-ups that offer optional parts of Wine

say()  { printf '== %s\n' "$*"; }
fail() { printf '%s: %s\n' "$(basename "$0")" "$*" >&2; exit 1; }

# build_and_install [TARGETS...]: the program into dist/, and what else is wanted for showing it.
build_and_install() {
    say "building"
    cmake --preset windows >/dev/null
    cmake --build --preset windows --target BrennvarGUI "$@" >/dev/null
    cmake --install build/windows >/dev/null
}
# What works the program and shows its pictures: the stand-ins, and the driver of its windows.
show_targets=(brennvar demo_driver)

# start_wine FOLDER: makes a prefix of our own in FOLDER and starts its background processes. They are started
# with their output closed: a test runner that shares its output with them would wait for them for ever.
start_wine() {
    export WINEPREFIX=$1
    rm -rf "$WINEPREFIX"
    mkdir -p "$(dirname "$WINEPREFIX")"
    cp -a "$PREFIX_TEMPLATE" "$WINEPREFIX"
    wineserver -p
    wine cmd /c ver >/dev/null 2>&1 </dev/null
}

stop_wine() { [ -n "${WINEPREFIX:-}" ] && wineserver -k >/dev/null 2>&1; return 0; }

# start_display: an X server of our own on a free display number, its process id in XVFB_PID.
start_display() {
    local number_file; number_file=$(mktemp)
    Xvfb -displayfd 3 -screen 0 1280x900x24 -nolisten tcp 3>"$number_file" >/dev/null 2>&1 &
    XVFB_PID=$!
    local i
    for ((i = 0; i < 200; i++)); do
        [ -s "$number_file" ] && break
        kill -0 "$XVFB_PID" 2>/dev/null || fail "Xvfb did not start"
        sleep 0.05
    done
    [ -s "$number_file" ] || fail "Xvfb did not start"
    export DISPLAY=:$(cat "$number_file")
    rm -f "$number_file"
}

stop_display() { [ -n "${XVFB_PID:-}" ] && kill "$XVFB_PID" 2>/dev/null; return 0; }

# run_peers ARGS: the cases of tests/peers under the running Wine. Their last line is "peers: N passed, N failed". The
# system's own Python, because the packages of the peers are for that one.
run_peers() {
    PYTHONDONTWRITEBYTECODE=1 /usr/bin/python3 tests/peers/run_peers.py --driver build/windows/tests/peers/tool_driver.exe \
        --prefix-template "$PREFIX_TEMPLATE" --table build/peers.txt "$@"
}
