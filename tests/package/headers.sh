#!/bin/sh
# The public headers, and only those, are installed, and each compiles on its own with no include
# directory but theirs.
. "$(dirname "$0")/support.sh"
include=$PREFIX/$INCLUDE_FOLDER
cd "$scratch"

expect "installed headers" "$(cat "$here/public-headers.txt")" \
    "$(cd "$include" && find . -type f | sed 's|^\./||' | LC_ALL=C sort)"

# Two at a time: every header brings much of the standard library with it.
# shellcheck disable=SC2016 # nothing is to be expanded here
xargs -P 2 -I '{}' sh -c 'printf "#include <%s>\n" "$0" | "$@" || echo "$0" >>broken' '{}' \
    "$CXX" -std=c++20 -fsyntax-only -Wall -Wextra -Wpedantic -Wconversion -Werror \
    -I "$include" -x c++ - <"$here/public-headers.txt"
[ ! -e broken ] || fail "does not compile on its own: $(cat broken)"

finish
