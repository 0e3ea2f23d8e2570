#!/bin/sh
# Makes a fresh Wine prefix at $1 with wineboot, once, for the tests that
# check what the program does to a real prefix. Without Wine it makes nothing
# and those tests skip themselves.
set -eu
mkdir -p "$(dirname "$1")"
prefix=$(cd "$(dirname "$1")" && pwd)/$(basename "$1")
if [ -f "$prefix/system.reg" ]; then
  exit 0
fi
if ! command -v wine >/dev/null 2>&1; then
  echo "wine is not installed: the tests on a real Wine prefix will be skipped"
  exit 0
fi
rm -rf "$prefix.new"
export WINEPREFIX="$prefix.new" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
wine wineboot -i >/dev/null 2>&1 || true
wineserver -w
if [ ! -f "$prefix.new/system.reg" ]; then
  echo "wineboot made no prefix at $prefix.new" >&2
  exit 1
fi
mv "$prefix.new" "$prefix"
