#!/usr/bin/env bash
# Builds and runs the benchmarks and compares them with what the program must keep up with. One line for each measure:
# name, value, goal, and "ok" or "short". A goal that is missed does not fail the script; only a measure that cannot
# be taken does. The core's run on this system, those with windows under Wine on a display of their own.
#   --repetitions N  how often each benchmark runs (default 15, the lists' a third of it); the median counts
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/lib.sh

# name, benchmark, its yardstick, how the value is made of both, goal:
#   speed  the measure's speed as a part of the yardstick's, at least the goal
#   times  the measure's time as a multiple of the yardstick's, at most the goal
#   waits  the measure's real time as a multiple of the yardstick's, at most the goal: for several threads, which the
#          processor time of one does not tell of, and for waiting for the disk
#   ms     the measure's time in milliseconds, below the goal; no yardstick
#   bytes  what the measure has allocated for each record at most, at most the goal; no yardstick
measures='
decipher_rules    DecipherRules   CopyRules      speed  0.7
look_up_rule      LookUpLastRule  ReadRulesFile  times  1.2
why_rules         WhyRules        -              ms     5
why_rules_ratio   WhyRules        CopyAdvancedRules  times  1.0
why_rules_address WhyRulesOfAnAddress  -         ms     16
covered_rules       CoveredRulesOfOneShape  -         ms     1000
covered_rules_ratio CoveredRules            AllPairs  times  4.0
export_rules      ExportRules     ZipRules       waits  1.1
import_rules      ImportRules     UnzipRules     waits  1.2
read_70_options   ReadAllOptions  -              ms     5
connections           Refresh/as_read     SortTables  times  2.0
connections_sorted    Refresh/sorted      SortTables  times  2.0
connections_address   Refresh/by_address  SortTables  times  2.0
connections_grouped   Refresh/grouped     SortTables  times  2.0
connections_searched  Refresh/searched    SortTables  times  2.0
log_newest_rows   NewestRows        -               ms     10
log_list          ListTrafficLog    ReadTrafficLog  times  1.5
log_filter        FilterTrafficLog  ReadTrafficLog  times  1.2
log_search        SearchTrafficLog  ReadTrafficLog  times  3.0
log_search_digits SearchAddress     ReadTrafficLog  times  3.0
log_list_bytes    ListTrafficLog    -               bytes  16
log_sort_bytes    SortTrafficLog/3  -               bytes  16
log_export        ExportTrafficLog  WriteExport     waits  2.0
'

# Under Wine, in programs that let measure and yardstick take turns: name, how the value is meant (as above), goal.
#   list_...  the tree control with ten million rows against the native list view
#   start     from the start of the process to the first painted window, against a program with an empty window
#   repaint   all of the control center at 1280 x 800 with a list, repaint_graphs with the graphs of the statistics,
#             page_change from one of them to the other: until the screen shows it, against a window that copies a
#             bitmap of that size
#   activity_own  answers a second whether a process is one of ours, as a part of a server's that only echoes
#   applications_...  the Applications page with 20,000 rules, until its first rows are painted, and from a key stroke
#             in its search box to the painted list (the slowest of 16, or the click into the box before them); _ratio: against a list of 200 rules
#   advanced_...  the same of the Advanced page
#   mail_attachment, encode_...  mail beside curl and coreutils' base64, see tests/peers/speed.py
#   connections_hold  the longest that the Connections page keeps its window waiting during a refresh with full tables
window_measures='
list_fill         times  0.5
list_first_paint  times  0.5
list_scroll_lines times  0.5
list_scroll_pages times  0.5
start             times  1.5
repaint           times  2.0
repaint_graphs    times  2.0
page_change       times  3.0
applications_open         ms     50
applications_open_ratio   times  3.0
applications_search       ms     16
applications_search_ratio times  3.0
advanced_open             ms     50
advanced_open_ratio       times  3.0
advanced_search           ms     16
advanced_search_ratio     times  3.0
activity_own      speed  0.8
connections_hold          ms     16
mail_attachment           times  1.1
encode_base64             speed  0.5
encode_quoted_printable   speed  0.5
'

# Processor time of the control center in the tray, with service and driver and no traffic, as a multiple of a program
# whose timers tick as often and which asks the driver for a question as often, and does nothing else. What both take of
# one core is printed as well.
idle_seconds=60
idle_times=1.2

# Memory that nobody shares with the control center, in the tray and with a log of so many rows on screen, without what
# Wine takes for each thread, which Windows does not; and what a user installs, languages aside. MB of 1,000,000 bytes.
memory_in_tray=10
memory_rows=100000
memory_with_rows=40
program_and_skins=3

repetitions=15
while [ $# -gt 0 ]; do
    case $1 in
        --repetitions) repetitions=$2; shift ;;
        *) fail "unknown option $1" ;;
    esac
    shift
done

logs=$PWD/build/logs
mkdir -p "$logs"
say "building bench" >&2
cmake --preset bench >"$logs/configure-bench.log" || { cat "$logs/configure-bench.log" >&2; fail "cannot configure bench"; }
cmake --build --preset bench >"$logs/build-bench.log" || { tail -n 60 "$logs/build-bench.log" >&2; fail "cannot build bench"; }

# Interleaved, so that a measure and its yardstick meet the same state of the machine.
say "running each benchmark $repetitions times" >&2
for program in core_bench log_bench; do
    build/bench/bench/$program --benchmark_repetitions="$repetitions" --benchmark_enable_random_interleaving=true \
        --benchmark_report_aggregates_only=true --benchmark_min_time=0.05 \
        --benchmark_out="$logs/$program.csv" --benchmark_out_format=csv >"$logs/$program.log" 2>&1 ||
        { tail -n 40 "$logs/$program.log" >&2; fail "the benchmarks failed"; }
done

# Columns of the report: name, iterations, real time, processor time, unit, ..., error. Ratios of one thread's work
# are made of processor time, which other work on the machine disturbs least; the rest is what a user waits.
awk -v measures="$measures" -F, '
    function milliseconds(value, unit) {
        if (unit == "ns") return value / 1e6
        if (unit == "us") return value / 1e3
        if (unit == "s") return value * 1e3
        return value
    }
    { name = $1; gsub(/"/, "", name) }
    name == "name" { bytes_column = 0; for (i = 1; i <= NF; i++) if ($i ~ /bytes_per_record/) bytes_column = i }
    name ~ /_median$/ && $4 + 0 > 0 {
        sub(/_median$/, "", name)
        sub(/\/real_time$/, "", name)
        real[name] = milliseconds($3, $5); cpu[name] = milliseconds($4, $5)
        if (bytes_column) bytes[name] = $bytes_column
    }
    END {
        count = split(measures, rows, "\n")
        for (i = 1; i <= count; i++) {
            if (split(rows[i], field, " ") == 0) continue
            if (!(field[2] in cpu) || (field[3] != "-" && !(field[3] in cpu))) {
                printf "%-18s not measured\n", field[1]
                missing = 1
                continue
            }
            if (field[4] == "speed") { value = cpu[field[3]] / cpu[field[2]]; ok = value >= field[5]; sign = ">=" }
            else if (field[4] == "times") { value = cpu[field[2]] / cpu[field[3]]; ok = value <= field[5]; sign = "<=" }
            else if (field[4] == "waits") { value = real[field[2]] / real[field[3]]; ok = value <= field[5]; sign = "<=" }
            else if (field[4] == "bytes") { value = bytes[field[2]]; ok = value > 0 && value <= field[5]; sign = "<=" }
            else { value = real[field[2]]; ok = value < field[5]; sign = "<" }
            unit = field[4] == "ms" ? "ms" : field[4] == "bytes" ? "B" : "x"
            printf "%-18s  %8.3f %-2s  %-2s %-4s  %s\n", field[1], value, unit, sign, field[5], ok ? "ok" : "short"
        }
        exit missing
    }' "$logs/core_bench.csv" "$logs/log_bench.csv" || fail "some measures could not be taken"

say "measuring windows under Wine" >&2
{ cmake --preset windows && cmake --build --preset windows --target windows_bench brennvar demo_driver tool_driver; } >"$logs/build-windows-bench.log" 2>&1 ||
    { tail -n 60 "$logs/build-windows-bench.log" >&2; fail "cannot build windows_bench"; }
cleanup() { stop_wine; stop_display; }
trap cleanup EXIT
start_display
start_wine "$PWD/build/prefix-bench"
# A user who has been welcomed already: no notice of the shell's in between.
wine reg add 'HKCU\Software\Quorlan\Brennvar Firewall' /v FirstRunBV /t REG_DWORD /d 1 /f >/dev/null 2>&1 </dev/null
PYTHONDONTWRITEBYTECODE=1 /usr/bin/python3 tests/peers/speed.py build/windows/tests/peers/tool_driver.exe \
    $(((repetitions + 2) / 3)) >"$logs/mail-bench.log" 2>"$logs/mail-bench-errors.log" </dev/null ||
    { cat "$logs/mail-bench-errors.log" >&2; fail "mail could not be measured"; }
# As installed: skins and languages stand beside the program.
place=$PWD/build/bench-program
rm -rf "$place"
cmake --install build/windows --prefix "$place" >/dev/null
cp build/windows/bench/windows/*.exe "$place"
cd "$place"
{
    wine list_bench.exe $(((repetitions + 2) / 3)) &&
        wine repaint_bench.exe &&
        wine applications_bench.exe &&
        wine activity_bench.exe &&
        wine connections_bench.exe &&
        wine start_bench.exe BrennvarGUI.exe empty_window.exe
} >"$logs/windows-bench.log" 2>"$logs/windows-bench-errors.log" </dev/null ||
    { cat "$logs/windows-bench-errors.log" >&2; fail "some measures could not be taken"; }
cat "$logs/mail-bench.log" "$logs/windows-bench.log" | tr -d '\r' | awk -v measures="$window_measures" '
    { values[$1] = $2 }
    END {
        count = split(measures, rows, "\n")
        for (i = 1; i <= count; i++) {
            if (split(rows[i], field, " ") == 0) continue
            if (!(field[1] in values)) { printf "%-18s not measured\n", field[1]; missing = 1; continue }
            value = values[field[1]] + 0
            isTime = field[2] == "ms"
            isSpeed = field[2] == "speed"
            ok = isTime ? value < field[3] : isSpeed ? value >= field[3] : value <= field[3]
            printf "%-18s  %8.3f %-2s  %-2s %-4s  %s\n", field[1], value, isTime ? "ms" : "x", isTime ? "<" : isSpeed ? ">=" : "<=", field[3], ok ? "ok" : "short"
        }
        exit missing
    }' || fail "some measures could not be taken"

# processor_time PID: of all threads since the start, nanoseconds. The kernel's counters by ticks are too coarse for a
# program that wakes up with the tick.
processor_time() { cat "/proc/$1"/task/*/schedstat | awk '{ sum += $1 } END { printf "%.0f", sum }'; }

say "measuring $idle_seconds s of doing nothing" >&2
root=$OLDPWD
data=$WINEPREFIX/drive_c/ProgramData/Quorlan/Brennvar\ Firewall
printf 'totals 0 0\nlog-many %s\n' $memory_rows >idle.scenario
wine "$root/build/windows/standin/brennvar.exe" --scenario idle.scenario >"$logs/service.log" 2>&1 </dev/null &
service=$!
until grep -qs "EVENT started" "$data/journal.txt"; do
    kill -0 "$service" 2>/dev/null || { cat "$logs/service.log" >&2; fail "the service stand-in did not start"; }
    sleep 0.1
done
wine BrennvarGUI.exe >/dev/null 2>&1 </dev/null &
interface=$!
timeout 60 wine "$root/build/windows/gallery/demo_driver.exe" 'wait:#462' 'close:#462' 'gone:#462' >/dev/null </dev/null ||
    fail "the control center did not go to the tray"
wine empty_window.exe --asks >/dev/null 2>&1 </dev/null &
yardstick=$!
sleep 5  # both have started for good
before=$(processor_time $interface) yardstick_before=$(processor_time $yardstick)
sleep "$idle_seconds"
after=$(processor_time $interface) yardstick_after=$(processor_time $yardstick)
awk -v ours=$((after - before)) -v least=$((yardstick_after - yardstick_before)) -v seconds="$idle_seconds" \
    -v times="$idle_times" 'BEGIN {
        if (ours <= 0 || least <= 0) exit 1
        ratio = ours / least
        printf "%-18s  %8.3f %-2s  %-2s %-4s  %s\n", "idle_to_asking", ratio, "x", "<=", times, ratio <= times ? "ok" : "short"
        printf "%-18s  %8.3f %s\n", "idle_in_tray", ours / seconds / 1e7, "%"
        printf "%-18s  %8.3f %s\n", "idle_asking_alone", least / seconds / 1e7, "%"
    }' || fail "some measures could not be taken"

# private_memory PID: bytes
private_memory() { awk '/^RssAnon/ { print $2 * 1024 }' "/proc/$1/status"; }
thread_count() { ls "/proc/$1/task" | wc -l; }
# megabytes NAME PID GOAL: less what its threads take, as two programs have it of which one has more of them
megabytes() {
    awk -v name="$1" -v all="$(private_memory "$2")" -v threads=$(($(thread_count "$2") - 1)) -v one="$(private_memory $yardstick)" \
        -v more="$(private_memory $threaded)" -v count="$thread_yardstick" -v goal="$3" 'BEGIN {
            value = (all - threads * (more - one) / count) / 1e6
            printf "%-18s  %8.3f %-2s  %-2s %-4s  %s\n", name, value, "MB", "<=", goal, value <= goal ? "ok" : "short"
            printf "%-18s  %8.3f %s\n", name "_all", all / 1e6, "MB"
        }'
}
say "measuring memory" >&2
kill "$yardstick" 2>/dev/null || true
thread_yardstick=16
wine empty_window.exe >/dev/null 2>&1 </dev/null &
yardstick=$!
wine empty_window.exe --threads $thread_yardstick >/dev/null 2>&1 </dev/null &
threaded=$!
until [ "$(thread_count $threaded)" -gt $thread_yardstick ] && [ "$(thread_count $yardstick)" -gt 0 ]; do
    kill -0 "$threaded" && kill -0 "$yardstick" || fail "the yardstick of memory did not start"
    sleep 0.1
done
sleep 2
megabytes memory_in_tray "$interface" $memory_in_tray
wine BrennvarGUI.exe >/dev/null 2>&1 </dev/null || true  # brings the first one forward
timeout 120 wine "$root/build/windows/gallery/demo_driver.exe" 'wait:#462' 'page:#462:463' "rows:#462:$memory_rows" >/dev/null </dev/null ||
    fail "the log was not listed"
megabytes memory_with_rows "$interface" $memory_with_rows
find BrennvarGUI.exe Skins -type f -printf '%s\n' | awk -v goal=$program_and_skins '
    { bytes += $1 }
    END { printf "%-18s  %8.3f %-2s  %-2s %-4s  %s\n", "program_and_skins", bytes / 1e6, "MB", "<=", goal, bytes / 1e6 <= goal ? "ok" : "short" }'
kill "$interface" "$yardstick" "$threaded" 2>/dev/null || true
wine "$root/build/windows/standin/brennvar.exe" --stop >/dev/null 2>&1 </dev/null || true
