#!/usr/bin/env bash
# Changes one operator or constant of the core at a time, at random places, and prints the changes that no unit
# test notices. Works in build/mutate, on a copy of the sources: it may be stopped at any time.
#   scripts/mutate.sh [--count N] [--seed N] [--headers N] [FOLDER...]
#   --count N    how many places (default 200)
#   --seed N     the same places again (default: another choice each time; it is printed)
#   --headers N  at most so many of them in headers, for which much is compiled anew (default: one in six)
#   FOLDER       a folder below src, such as ipc, or the end of a path; default: the whole core
# A place is first a line, then an operator or constant in it. A change that does not compile, or does the same,
# proves nothing: the former is counted by itself, the latter is for the reader to find.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/lib.sh

count=200 headers=
seed=$((SRANDOM % 100000))
folders=()
while [ $# -gt 0 ]; do
    case $1 in
        --count) count=$2; shift ;;
        --seed) seed=$2; shift ;;
        --headers) headers=$2; shift ;;
        -*) fail "unknown option $1" ;;
        *) folders+=("$1") ;;
    esac
    shift
done

work=$PWD/build/mutate
tree=$work/tree
mkdir -p "$tree" "$work/tmp"
exec 9>"$work/lock"
flock -n 9 || fail "is running already"
export TMPDIR=$work/tmp
trap 'rm -rf "$work"/tmp/*' EXIT

# The copy as the sources are now; what is the same keeps its time, so that little is compiled.
copy_sources() {
    local file
    git ls-files --cached --others --exclude-standard | sort -u | while IFS= read -r file; do
        [ ! -f "$file" ] || echo "$file"
    done >"$work/list"
    while IFS= read -r file; do
        cmp -s "$file" "$tree/$file" || { mkdir -p "$tree/$(dirname "$file")"; cp "$file" "$tree/$file"; }
    done <"$work/list"
    (cd "$tree" && find . -type f -printf '%P\n' | sort | comm -23 - "$work/list" | xargs -r -d '\n' rm)
}

build() { cmake --build "$work/build" --target core_tests -- -j"$(nproc)" >"$work/build.log" 2>&1; }

# Seconds that the tests may take: a change may make them hang, or ask for all memory.
run_tests() {
    (ulimit -v 8000000; ulimit -c 0
     timeout -k 5 "$1" "$work/build/tests/core_tests" --gtest_fail_fast --gtest_brief=1) >"$work/tests.log" 2>&1 9>&-
}

# Every place that can be changed, one a line: file, line, column, length and what stands there then, between tabs.
list_places() {
    awk '
    # Blanks for comments and literals, so that columns stay.
    function Blank(text, out, c, two) {
        out = ""
        while (text != "") {
            c = substr(text, 1, 1); two = substr(text, 1, 2)
            if (inComment) {
                if (two == "*/") { inComment = 0; out = out "  "; text = substr(text, 3); continue }
                out = out " "; text = substr(text, 2); continue
            }
            if (two == "//") break
            if (two == "/*") { inComment = 1; continue }
            if (match(text, /^R"\([^)]*(\)[^"][^)]*)*\)"/) || match(text, /^"([^"\\]|\\.)*"/) ||
                ((out == "" || out !~ /[0-9a-fA-F]$/) && match(text, /^'\''([^'\''\\]|\\.)+'\''/))) {
                out = out sprintf("%" RLENGTH "s", ""); text = substr(text, RLENGTH + 1); continue
            }
            out = out c; text = substr(text, 2)
        }
        return out
    }
    function Put(column, length_, change) {
        print FILENAME "\t" FNR "\t" column "\t" length_ "\t" change
    }
    # Every occurrence of a mark, with what surrounds it; the change is for the mark itself.
    function Swap(code, mark, before, after, change, at, from) {
        from = 1
        while ((at = index(substr(code, from), before mark after)) > 0) {
            at += from - 1
            Put(at + length(before), length(mark), change)
            from = at + length(before mark)
        }
    }
    function Words(code, word, change, from, at) {
        from = 1
        while ((at = index(substr(code, from), word)) > 0) {
            at += from - 1
            if (substr(code, at - 1, 1) !~ /[A-Za-z0-9_]/ && substr(code, at + length(word), 1) !~ /[A-Za-z0-9_]/)
                Put(at, length(word), change)
            from = at + length(word)
        }
    }
    function Numbers(code, from, at, number, suffix) {
        from = 1
        while (match(substr(code, from), /0[xX][0-9a-fA-F'\'']+[uUlL]*|[0-9][0-9'\'']*(\.[0-9]+)?[a-zA-Z]*/)) {
            at = from + RSTART - 1
            number = substr(code, at, RLENGTH)
            from = at + RLENGTH
            if (substr(code, at - 1, 1) ~ /[A-Za-z0-9_]/) continue
            suffix = ""
            if (number !~ /^0[xX]/ && match(number, /(ms|min|s)$/)) suffix = substr(number, RSTART)
            Put(at, length(number), "(" number " + 1" suffix ")")
        }
    }
    FNR == 1 { inComment = 0; skipping = 0; inDirective = 0 }
    {
        code = Blank($0)
        if (inDirective || code ~ /^[ ]*#/) { inDirective = ($0 ~ /\\$/); next }
        if (code ~ /static_assert/) skipping = 1
        if (skipping) { if (code ~ /;/) skipping = 0; next }
        if (code ~ /\)[a-z ]* = (0|default|delete);/ || code ~ /operator[=<>!]+\(/) next
        Swap(code, "==", " ", " ", "!="); Swap(code, "!=", " ", " ", "==")
        Swap(code, "<", " ", " ", "<="); Swap(code, "<=", " ", " ", "<")
        Swap(code, ">", " ", " ", ">="); Swap(code, ">=", " ", " ", ">")
        Swap(code, "&&", " ", " ", "||"); Swap(code, "||", " ", " ", "&&")
        Swap(code, "+", " ", " ", "-"); Swap(code, "-", " ", " ", "+")
        Swap(code, "*", " ", " ", "/"); Swap(code, "/", " ", " ", "*"); Swap(code, "%", " ", " ", "*")
        Swap(code, "&", " ", " ", "|"); Swap(code, "|", " ", " ", "&"); Swap(code, "^", " ", " ", "|")
        Swap(code, "<<", " ", " ", ">>"); Swap(code, ">>", " ", " ", "<<")
        Swap(code, "+=", " ", " ", "-="); Swap(code, "-=", " ", " ", "+=")
        Swap(code, "|=", " ", " ", "="); Swap(code, "&=", " ", " ", "=")
        Swap(code, "++", "", "", "--"); Swap(code, "--", "", "", "++")
        Swap(code, "std::min", "", "(", "std::max"); Swap(code, "std::max", "", "(", "std::min")
        Swap(code, "!", "(", "", ""); Swap(code, "!", " ", "", "")
        Words(code, "true", "false"); Words(code, "false", "true")
        Words(code, "continue", "break")
        Numbers(code)
        if (!match(code, /return [^;{}]+;/)) next
        if (substr(code, RSTART + 7, RLENGTH - 8) !~ /^(std::nullopt|false|0|nullptr|true)$/)
            Put(RSTART + 7, RLENGTH - 8, "{}")
    }' "$@"
}

# COUNT lines of the list, a line of the sources as likely as every other one. No place twice.
choose_places() {
    awk -F'\t' -v count="$count" -v seed="$seed" -v most="${headers:-$((count / 6))}" '
        { key = $1 ":" $2; if (!(key in many)) { keys[++lines] = key } place[key, ++many[key]] = $0; total++ }
        END {
            srand(seed)
            while (chosen < count && chosen + dropped < total) {
                key = keys[1 + int(rand() * lines)]
                one = place[key, 1 + int(rand() * many[key])]
                if (one in seen) continue
                seen[one] = 1
                if (key ~ /\.h:/ && headers >= most) { dropped++; continue }
                if (key ~ /\.h:/) headers++
                chosen++
                print one
            }
        }'
}

# change FILE LINE COLUMN LENGTH TEXT: in the copy; the file as it was stays in $work/before.
change() {
    cp "$tree/$1" "$work/before"
    awk -v line="$2" -v column="$3" -v size="$4" -v text="$5" \
        'NR == line { $0 = substr($0, 1, column - 1) text substr($0, column + size) } { print }' \
        "$work/before" >"$tree/$1"
}

say "building"
copy_sources
cmake -S "$tree" -B "$work/build" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS="-w" \
    -DCMAKE_CXX_FLAGS_DEBUG="-O0" >"$work/build.log" 2>&1 && build ||
    { tail -n 40 "$work/build.log"; fail "cannot build"; }
SECONDS=0
run_tests 600 || { tail -n 40 "$work/tests.log"; fail "the tests fail without a change"; }
limit=$((SECONDS * 4 + 20))

# What the tests are built from; a header that none of them includes cannot be tested.
mapfile -t files < <(ninja -C "$work/build" -t deps |
    sed -n 's,^ *\(.*/mutate/tree/\|\.\./tree/\)\(src/.*\)$,\2,p' | sort -u)
chosen=()
cd "$tree"
for file in "${files[@]}"; do
    [ ${#folders[@]} -eq 0 ] && { chosen+=("$file"); continue; }
    for folder in "${folders[@]}"; do
        [[ $file == src/$folder/* || $file == *"$folder" ]] || continue
        chosen+=("$file")
        break
    done
done
[ ${#chosen[@]} -gt 0 ] || fail "no such part of the core"
list_places "${chosen[@]}" >"$work/places"
say "$count of $(wc -l <"$work/places") places in ${#chosen[@]} files, seed $seed"

export CCACHE_READONLY=1    # nobody compiles these again
caught=0 survived=0 broken=0
# Also of a run that is stopped.
print_counts() {
    local compiled=$((caught + survived))
    say "$caught caught, $survived survived, $broken did not compile:" \
        "$((100 * caught / (compiled > 0 ? compiled : 1))) % of those that did are caught, seed $seed"
    rm -rf "$work"/tmp/*
}
trap print_counts EXIT
trap 'exit 1' INT TERM
while IFS=$'\t' read -r file line column size text <&3; do
    change "$file" "$line" "$column" "$size" "$text"
    if ! build; then
        broken=$((broken + 1))
    elif run_tests "$limit" 2>/dev/null; then
        survived=$((survived + 1))
        printf '%s:%s: %s\n    -> %s\n' "$file" "$line" "$(sed -n "${line}s/^ *//p" "$work/before")" \
            "$(sed -n "${line}s/^ *//p" "$tree/$file")"
    else
        caught=$((caught + 1))
    fi
    cp "$work/before" "$tree/$file"
done 3< <(choose_places <"$work/places")
