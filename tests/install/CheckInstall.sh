#!/usr/bin/env bash
# CheckInstall.sh BUILD SOURCE: installs the build into a temporary DESTDIR
# under /usr and checks the installed tree: its files, the desktop entry, the
# man pages against the command list, the bash completion, and that the
# installed programs run from there and find their seed and help.
set -euo pipefail
build=$1
source=$2
root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT
fail() { echo "FAIL: $*" >&2; exit 1; }

DESTDIR="$root" cmake --install "$build" --prefix /usr >/dev/null
usr="$root/usr"

# The files of the tree.
for file in bin/glyphmoor-cli bin/glyphmoor share/applications/glyphmoor.desktop \
  share/man/man1/glyphmoor.1 share/man/man1/glyphmoor-cli.1 \
  share/bash-completion/completions/glyphmoor-cli share/glyphmoor/seed/system.reg; do
  [ -s "$usr/$file" ] || fail "$file is not installed"
done
for size in 16 22 24 32 48 64 128 256; do
  icon="$usr/share/icons/hicolor/${size}x${size}/apps/glyphmoor.png"
  [ -s "$icon" ] || fail "no ${size}x${size} icon"
  # A PNG's width and height are the big-endian words at bytes 16 and 20.
  dims=$(od -An -tu1 -j16 -N8 "$icon" | awk '{print $3*256+$4 "x" $7*256+$8}')
  [ "$dims" = "${size}x${size}" ] || fail "the ${size}x${size} icon is $dims"
done
# Every help page of the source is installed, and nothing else.
diff -r "$source/help" "$usr/share/glyphmoor/help" || fail "the installed help differs from help/"
# The project's seed and the generated one are installed as one folder.
for seed in "$source/seed" "$build/seed"; do
  [ -n "$(find "$seed" -type f)" ] || fail "$seed holds no files"
  (cd "$seed" && find . -type f) | while read -r file; do
    cmp -s "$seed/$file" "$usr/share/glyphmoor/seed/$file" || fail "seed file $file is not installed"
  done
done

if command -v desktop-file-validate >/dev/null; then
  desktop-file-validate "$usr/share/applications/glyphmoor.desktop" || fail "the desktop entry is not valid"
fi
grep -qx "Exec=glyphmoor" "$usr/share/applications/glyphmoor.desktop" || fail "the desktop entry starts no glyphmoor"

# The installed programs run from the tree and find their files there, not
# in the source tree: a new default machine is made from the installed seed.
export XDG_DATA_HOME="$root/data"
unset GLYPHMOOR_SEED_DIR GLYPHMOOR_HELP_DIR
version=$("$usr/bin/glyphmoor-cli" --version)
[ "$("$usr/bin/glyphmoor" --version)" = "${version/glyphmoor-cli/glyphmoor}" ] || fail "the versions differ"
catalogue=$("$usr/bin/glyphmoor-cli" icons) || fail "the installed glyphmoor-cli cannot list the icons"
[ -n "$catalogue" ] && [ -s "$XDG_DATA_HOME/glyphmoor/machine/system.reg" ] || fail "no default machine was made"
# Without its installed seed the installed program says it misses that one.
mv "$usr/share/glyphmoor/seed/system.reg" "$root/system.reg"
XDG_DATA_HOME="$root/data2" "$usr/bin/glyphmoor-cli" icons >"$root/out" 2>&1 && fail "a machine was made without a seed"
grep -qF "seed of the default machine is missing: $usr/share/glyphmoor/seed" "$root/out" ||
  fail "the installed program looks for its seed elsewhere: $(cat "$root/out")"
mv "$root/system.reg" "$usr/share/glyphmoor/seed/system.reg"

# The man page of the command line names every command "help" lists.
commands=$("$usr/bin/glyphmoor-cli" help | sed -n 's/^  \([a-z][a-z-]*\( [a-z][a-z-]*\)\?\).*/\1/p' | sort -u)
[ -n "$commands" ] || fail "help lists no commands"
page=$(sed 's/\\-/-/g; s/\\f[BIR]//g; s/^\.BR* //; s/"//g' "$usr/share/man/man1/glyphmoor-cli.1")
while read -r command; do
  grep -q -- "^$command\( \|\$\)" <<<"$page" || fail "the man page lacks \"$command\""
done <<<"$commands"
man -l "$usr/share/man/man1/glyphmoor-cli.1" >/dev/null 2>&1 || ! command -v man >/dev/null ||
  fail "the man page does not format"

# The completion offers the commands and their second words.
completion=/usr/share/bash-completion/bash_completion
if [ -r "$completion" ]; then
  got=$(PATH="$usr/bin:$PATH" bash -c '
    source '"$completion"'; source "$1"
    complete_words() { COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); COMP_LINE="$*"; COMP_POINT=${#COMP_LINE}
      _glyphmoor_cli; echo "${COMPREPLY[*]}"; }
    complete_words glyphmoor-cli re; complete_words glyphmoor-cli icons rest' _ \
    "$usr/share/bash-completion/completions/glyphmoor-cli")
  [ "$got" = $'rebuild-icons reg resources\nrestore restore-all' ] || fail "the completion gives: $got"
fi
echo "installed tree ok: $(cd "$usr" && find . -type f | wc -l) files"
