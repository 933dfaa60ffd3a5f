#!/usr/bin/env bash
# For translators: prints the lines of English that a language lacks, and the numbers that English does not have.
#   scripts/texts.sh LANGUAGE     the name of a folder in assets/Languages
set -euo pipefail
cd "$(dirname "$0")/../assets/Languages"
[ $# -eq 1 ] && [ -f "$1/default.ini" ] || { echo "usage: texts.sh LANGUAGE, one of:" *; exit 2; } >&2
export LC_ALL=C     # bytes, whatever their code page
awk -F= '!/^DL_N_201_/ { next }
    NR == FNR { has[$1] = 1; next }
    { known[$1] = 1; if (!($1 in has)) print }
    END { for (key in has) if (!(key in known)) print "; not in English: " key }' "$1/default.ini" English/default.ini |
    tr -d '\r'
