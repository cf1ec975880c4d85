#!/bin/sh
# Emulator of the MinGW-w64 cross build: runs a Windows program under Wine,
# headless and quiet, in a Wine prefix of its own (made on first use).
# Usage: wine-run.sh <wine> <prefix> <dll-dirs, ':'-separated> <program> [args...]
# The DLL directories hold the compiler's runtime DLLs; Wine looks them up
# through WINEPATH, whose entries are Windows paths (Z: maps to /).
set -e
wine=$1
export WINEPREFIX="$2"
export WINEDEBUG=-all
# No Mono or Gecko installer dialogs when the prefix is made.
export WINEDLLOVERRIDES="mscoree,mshtml="
unset DISPLAY WAYLAND_DISPLAY
path=""
old_ifs=$IFS
IFS=:
for dir in $3; do path="${path:+$path;}Z:$dir"; done
IFS=$old_ifs
export WINEPATH="$path"
shift 3
if [ ! -f "$WINEPREFIX/system.reg" ]; then
  "$wine" wineboot --init >/dev/null 2>&1
fi
exec "$wine" "$@"
