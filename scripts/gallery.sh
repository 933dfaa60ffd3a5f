#!/usr/bin/env bash
# Pictures of every window in every skin and language, for whoever works on them: out/gallery/SKIN-LANGUAGE-WHAT.png.
# Builds and installs into dist/, and works the real program against the stand-ins and the development program that
# shows the controls in all of their states, on a display of its own.
#   --no-setup  skip the set-up script
#   --built     skip that and building as well
# SKINS and LANGUAGES, with blanks between, choose some of them, and PAGES, an expression for grep, some of the pages of
# the development program; NO_PROGRAM=1 leaves the real program out. The pictures of the other skins and languages stay.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/lib.sh

setup=yes build=yes
for option in "$@"; do
    case $option in
        --no-setup) setup= ;;
        --built) setup= build= ;;
        *) fail "unknown option $option" ;;
    esac
done
[ -z "$setup" ] || scripts/setup.sh
[ -z "$build" ] || build_and_install "${show_targets[@]}" gallery

read -ra skins <<<"${SKINS:-Default Graphite}"
read -ra languages <<<"${LANGUAGES:-English German Slovak Russian}"
standin=build/windows/standin/brennvar.exe
home=build/gallery                      # the development program, where it finds skins and languages beside it
user='HKEY_CURRENT_USER\Software\Quorlan\Brennvar Firewall'
shots=$home/shots
logs=build/logs
rm -rf "$home"
mkdir -p "$shots" "$logs" out/gallery
cp build/windows/gallery/gallery.exe "$home"
ln -s ../../dist/Skins ../../dist/Languages "$home"

cleanup() { stop_wine; stop_display; }
trap cleanup EXIT
unset DISPLAY
start_display
start_wine "$PWD/build/prefix-gallery"
data=$WINEPREFIX/drive_c/ProgramData/Quorlan/Brennvar\ Firewall

drive() { wine build/windows/gallery/demo_driver.exe "$@" >/dev/null 2>"$logs/driver.log" </dev/null ||
    { cat "$logs/driver.log" >&2; fail "no pictures of $prefix"; }; }

# choose SKIN LANGUAGE: a data folder with nothing but this choice, and a user who has been welcomed, but has no window
# remembered. The welcome would come at any time, over any window.
choose() {
    rm -rf "$data"
    mkdir -p "$data"
    printf '[Skin]\r\nDirectory=%s\r\n[Language]\r\nDirectory=%s\r\n' "$1" "$2" >"$data/settings.ini"
    printf 'REGEDIT4\r\n\r\n[-%s]\r\n\r\n[%s]\r\n"FirstRunBV"=dword:00000001\r\n' "$user" "$user" >"$home/user.reg"
    wine regedit /S "$home/user.reg" >/dev/null 2>&1 </dev/null
}

# start_service SCENARIO: sets $service, its process.
start_service() {
    wine "$standin" --scenario "$1" >"$logs/service.log" 2>&1 </dev/null &
    service=$!
    until grep -qs "EVENT started" "$data/journal.txt"; do
        kill -0 "$service" 2>/dev/null || { cat "$logs/service.log" >&2; fail "the service stand-in did not start"; }
        sleep 0.1
    done
}
stop_service() {
    wine "$standin" --stop >/dev/null 2>&1 </dev/null || true
    wait "$service" || true
}

# The real program while neither service nor driver is there, and then the notices of a service that comes.
show_alone() {
    local main='#462' confirmation='#905' service
    wine dist/BrennvarGUI.exe >/dev/null 2>&1 </dev/null &
    local interface=$!
    drive "size:$main:1000x680" "picture:$main:$shots/$prefix-unreachable.bmp" "page:$main:462" \
        "picture:$main:$shots/$prefix-connections-unreachable.bmp" "page:$main:461"
    printf 'notice %s\r\n' 'Port scan from 203.0.113.77' \
        'DNS spoofing attempt | https://www.example.com' >"$home/notices.scenario"
    start_service "$home/notices.scenario"
    drive "opened:$main:1" "popups:$main:$shots/$prefix-notice.bmp" "picture:$main:$shots/$prefix-notices.bmp" \
        "command:$main:376" "wait:$confirmation" "press:$confirmation:1"
    wait "$interface" || fail "the control center ended with $?"
    stop_service
}

# show_program SKIN: its question, its pages in their first, least and largest size, and its messages.
show_program() {
    local service
    start_service scripts/demo.scenario
    wine dist/BrennvarGUI.exe >/dev/null 2>&1 </dev/null &
    local interface=$!
    local main='#462' question='#334' confirmation='#905' leaving='#1120' about='#951' password='#1204' sheet='#981' mail='#1461' mail_test='#1481' why='#1551' site='#1656' delete_logs='#1210' group=1287
    local page number name rows other=0  # the skin that is not chosen, by its place
    [ "$(ls dist/Skins | head -n 1)" != "$1" ] || other=1
    local steps=("enabled:$question:334" "picture:$question:$shots/$prefix-question.bmp"
        "press:$question:573" "press:$question:334" "gone:$question"
        "enabled:$question:337" "picture:$question:$shots/$prefix-activity.bmp" "press:$question:337" "gone:$question")
    # Command numbers of the pages, and how many rows their lists get from the scenario.
    local pages=(461:statistics 462:connections:8 429:advanced:6 437:options 439:applications:6 463:trafficlog:12)
    local sections=(general enhancements logging miscellaneous icmp filesharing filtering trusted resources password) section
    for size in 1000x680 820x560; do
        steps+=("size:$main:$size")
        for page in "${pages[@]}"; do
            IFS=: read -r number name rows <<<"$page"
            steps+=("page:$main:$number")
            [ -z "$rows" ] || steps+=("rows:$main:$rows")
            if [ "$size" = 820x560 ]; then name+=-least; fi
            if [ "$number" != 437 ]; then
                steps+=("picture:$main:$shots/$prefix-$name.bmp")
                continue
            fi
            for section in "${!sections[@]}"; do
                steps+=("choose:$main:1100:$section" "picture:$main:$shots/$prefix-$name-${sections[section]}.bmp")
            done
        done
    done
    steps+=("maximise:$main" "page:$main:462" "rows:$main:8" "picture:$main:$shots/$prefix-connections-largest.bmp"
        "restore:$main" "size:$main:1000x680" "cell:$main:0x0" "menu:$main"
        "popups:$main:$shots/$prefix-listmenu.bmp" "leave:$main" "key:$main:13" "wait:$sheet" "picture:$sheet:$shots/$prefix-connection-details.bmp"
        "press:$sheet:2" "gone:$sheet" "do:$main:1555" "wait:$why" "enabled:$why:1553"
        "picture:$why:$shots/$prefix-why.bmp" "press:$why:2" "gone:$why" "click:$main:$group" "picture:$main:$shots/$prefix-connections-grouped.bmp"
        "click:$main:$group"
        "page:$main:463" "rows:$main:12" "cell:$main:4x0" "key:$main:13" "wait:$sheet"
        "picture:$sheet:$shots/$prefix-log-details.bmp" "press:$sheet:2" "gone:$sheet" "menu:$main"
        "popups:$main:$shots/$prefix-logmenu.bmp" "leave:$main" "pick:$main:200:1" "rows:$main:4"
        "picture:$main:$shots/$prefix-packets.bmp" "cell:$main:0x0" "key:$main:13" "wait:$sheet"
        "picture:$sheet:$shots/$prefix-packet-data.bmp" "press:$sheet:2" "gone:$sheet" "pick:$main:200:0"
        "rows:$main:12" "click:$main:105" "wait:$mail" "enabled:$mail:1471"
        "picture:$mail:$shots/$prefix-mail.bmp" "press:$mail:1471" "enabled:$mail:1471"
        "picture:$mail:$shots/$prefix-mail-failed.bmp" "press:$mail:2" "gone:$mail"
        "command:$main:992" "wait:$mail_test" "enabled:$mail_test:1483"
        "picture:$mail_test:$shots/$prefix-mail-test.bmp" "press:$mail_test:2" "gone:$mail_test"
        "command:$main:427" "wait:$about" "picture:$about:$shots/$prefix-about.bmp" "press:$about:1" "gone:$about"
        "command:$main:970" "wait:$confirmation" "picture:$confirmation:$shots/$prefix-reset-trusted.bmp"
        "press:$confirmation:2" "gone:$confirmation"
        "command:$main:972" "wait:$confirmation" "picture:$confirmation:$shots/$prefix-reset.bmp"
        "press:$confirmation:2" "gone:$confirmation"
        "command:$main:974" "wait:$confirmation" "picture:$confirmation:$shots/$prefix-updated.bmp"
        "press:$confirmation:1" "gone:$confirmation"
        "command:$main:976" "press:$password:1" "wait:$confirmation"
        "picture:$confirmation:$shots/$prefix-password-changed.bmp" "press:$confirmation:1" "gone:$password"
        "page:$main:463" "rows:$main:12" "sort:$main:3" "picture:$main:$shots/$prefix-sorted.bmp"
        "text:$main:915:nowhere" "picture:$main:$shots/$prefix-no-hit.bmp" "text:$main:915:"
        "command:$main:975" "enabled:$delete_logs:1212" "picture:$delete_logs:$shots/$prefix-delete-logs.bmp"
        "press:$delete_logs:1" "gone:$delete_logs" "command:$main:975" "wait:$delete_logs"
        "picture:$delete_logs:$shots/$prefix-delete-logs-none.bmp" "press:$delete_logs:2" "gone:$delete_logs"
        "picture:$main:$shots/$prefix-empty.bmp"
        "page:$main:461" "mode:$main:433" "picture:$main:$shots/$prefix-mode-allow.bmp"
        "mode:$main:435" "picture:$main:$shots/$prefix-mode-block.bmp"
        "mode:$main:858" "picture:$main:$shots/$prefix-mode-timed.bmp" "mode:$main:431"
        "picture:$main:$shots/$prefix-statistics-full.bmp"  # by now the graphs have something to show
        "page:$main:439" "rows:$main:6" "cell:$main:1x2" "cell:$main:4x0" "opened:$main:1"
        "picture:$main:$shots/$prefix-applications-details.bmp" "menu:$main"
        "popups:$main:$shots/$prefix-applications-menu.bmp" "leave:$main" "cell:$main:2x1+" "key:$main:46"
        "wait:$confirmation" "picture:$confirmation:$shots/$prefix-applications-remove.bmp" "press:$confirmation:2"
        "gone:$confirmation"
        "page:$main:437" "choose:$main:1100:6" "click:$main:1653" "wait:$site" "text:$site:1656:ads.example.com"
        "picture:$site:$shots/$prefix-add-site.bmp" "press:$site:2" "gone:$site"
        "choose:$main:1100:1" "click:$main:1016" "picture:$main:$shots/$prefix-options-warning.bmp"
        "command:$main:462" "wait:$leaving" "picture:$leaving:$shots/$prefix-leaving.bmp" "press:$leaving:1120"
        "gone:$leaving"
        "command:$main:376" "wait:$confirmation" "picture:$confirmation:$shots/$prefix-exit.bmp"
        "press:$confirmation:2" "gone:$confirmation"
        "page:$main:437" "choose:$main:1100:8" "pick:$main:962:$other" "click:$main:1101" "wait:$confirmation"
        "picture:$confirmation:$shots/$prefix-restart.bmp" "press:$confirmation:2" "gone:$confirmation"
        "command:$main:376" "wait:$confirmation" "press:$confirmation:1")
    drive "${steps[@]}"
    wait "$interface" || fail "the control center ended with $?"
    stop_service
}

# show_page NAME OPENS: a page of the development program, or the windows that it opens.
show_page() {
    wine "$home/gallery.exe" --page "$1" >/dev/null 2>&1 </dev/null &
    local gallery=$!
    if [[ $1 == confirmation-first ]]; then
        drive "wait:#334" "picture:#334:$shots/$prefix-gallery-$1.bmp" "close:Gallery"
    elif [[ $1 == confirmation* ]]; then
        # The buttons of a question come to life when it has been there for a moment.
        drive "enabled:#334:334" "picture:#334:$shots/$prefix-gallery-$1.bmp" "close:Gallery"
    elif [ "$2" -gt 0 ]; then
        drive "opened:Gallery:$2" "popups:Gallery:$shots/$prefix-gallery-$1.bmp" "close:Gallery"
    else
        drive "picture:Gallery:$shots/$prefix-gallery-$1.bmp" "close:Gallery"
    fi
    wait "$gallery" || true
}

wine "$home/gallery.exe" --list >"$home/pages" 2>/dev/null </dev/null
mapfile -t gallery_pages < <(tr -d '\r' <"$home/pages" | grep -E -- "${PAGES:-.}")
[ "${#gallery_pages[@]}" -gt 0 ] || fail "the gallery has no pages"
for skin in "${skins[@]}"; do
    for language in "${languages[@]}"; do
        prefix=${skin,,}-${language,,}
        say "$skin, $language"
        choose "$skin" "$language"
        if [ -z "${NO_PROGRAM:-}" ]; then
            show_program "$skin"
            choose "$skin" "$language"
            show_alone
            choose "$skin" "$language"
        fi
        for page in "${gallery_pages[@]}"; do
            read -r name opens translated <<<"$page"
            # Pages without a text of the language look the same in each.
            [ "$language" = English ] || [ -n "$translated" ] || continue
            show_page "$name" "$opens"
        done
    done
done

mogrify -format png -path out/gallery "$shots"/*.bmp
rm -rf "$shots"
printf '%s\n' out/gallery/*.png
say "$(find out/gallery -name '*.png' | wc -l) pictures in out/gallery"
