#!/usr/bin/env bash
# How ctest runs the Windows programs. The prefix is the caller's (WINEPREFIX).
export WINEDEBUG=${WINEDEBUG--all} WINEDLLOVERRIDES="mscoree,mshtml="
exec wine "$@"
