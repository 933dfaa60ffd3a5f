#!/usr/bin/env bash
# Installs what is missing, builds, installs into dist/, starts the stand-ins for service and driver and the control
# center, and shows a connection question. Without a display it starts one of its own (Xvfb), plays a short scenario
# and leaves screenshots in out/.
#   --no-demo   no scenario: this machine's real connections, until the user leaves the control center
#   --gallery   no scenario to look at, but pictures of every window in every skin and language (scripts/gallery.sh)
#   --no-setup  skip the set-up script
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/lib.sh

demo=yes gallery= setup=yes
for option in "$@"; do
    case $option in
        --no-demo) demo= ;;
        --gallery) gallery=yes ;;
        --no-setup) setup= ;;
        *) fail "unknown option $option" ;;
    esac
done
[ -z "$setup" ] || scripts/setup.sh
build_and_install "${show_targets[@]}" ${gallery:+gallery}
[ -z "$gallery" ] || exec scripts/gallery.sh --built

cleanup() { stop_wine; stop_display; }
trap cleanup EXIT
watched=                                # somebody is looking
if [ -n "${DISPLAY:-}" ]; then watched=yes; else start_display; fi
start_wine "$PWD/build/prefix-run"

standin=build/windows/standin/brennvar.exe
data=$WINEPREFIX/drive_c/ProgramData/Quorlan/Brennvar\ Firewall
mkdir -p "$data"

say "starting the stand-ins"
mkdir -p build/logs
scenario=()
[ -z "$demo" ] || scenario=(--scenario scripts/demo.scenario)
wine "$standin" "${scenario[@]}" >build/logs/service.log 2>&1 </dev/null &
service=$!
until grep -qs "EVENT started" "$data/journal.txt"; do
    kill -0 "$service" 2>/dev/null || { cat build/logs/service.log >&2; fail "the service stand-in did not start"; }
    sleep 0.1
done

say "starting the control center"
wine dist/BrennvarGUI.exe >/dev/null 2>&1 </dev/null &
interface=$!

if [ -z "$demo" ] || [ -n "$watched" ]; then
    say "running until the control center is left by the menu of its icon"
    wait "$interface"
    exit
fi

# Nobody is looking: work the windows, and keep pictures of them.
drive() { wine build/windows/gallery/demo_driver.exe "$@" >/dev/null </dev/null || fail "not done: $*"; }
# A picture of all, when two in a row are the same; what moves all the time is not waited for.
picture() {
    import -window root "out/$1.png"
    local i
    for ((i = 0; i < 20; i++)); do
        mv "out/$1.png" out/before.png
        sleep 0.1
        import -window root "out/$1.png"
        [ "$(compare -metric AE out/before.png "out/$1.png" null: 2>&1 || true)" != 0 ] || break
    done
    rm out/before.png
    say "out/$1.png"
}
main="Brennvar Personal Firewall" question="Confirm network connection" activity="Confirm process activity"
mkdir -p out
rm -f out/*.png

drive "enabled:$question:334"
picture 1-question
drive "press:$question:573" "press:$question:334" "gone:$question" "enabled:$activity:337"
picture 1-activity
drive "press:$activity:337" "gone:$activity" "page:$main:461"
picture 2-statistics
drive "page:$main:462" "rows:$main:8"
picture 3-connections
drive "page:$main:439" "rows:$main:5"
picture 4-applications
drive "page:$main:437"
picture 5-options
drive "page:$main:463" "rows:$main:12"
picture 6-traffic-log
drive "cell:$main:4x0" "key:$main:13" "wait:#981"
picture 7-log-details
drive "press:#981:2" "gone:#981" "pick:$main:200:1" "rows:$main:4" "cell:$main:0x0" "key:$main:13" "wait:#981"
picture 8-packet-data
drive "press:#981:2" "gone:#981" "pick:$main:200:0" "rows:$main:12" "click:$main:105" "wait:#1461" "enabled:#1461:1471"
picture 9-mail
drive "press:#1461:2" "gone:#1461" "command:$main:992" "wait:#1481" "enabled:#1481:1483"
picture 9-mail-test
drive "press:#1481:2" "gone:#1481"
grep -F " CONFIRM " "$data/journal.txt" | sed 's/^[0-9]* /answer received: /'
