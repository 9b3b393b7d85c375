#!/bin/sh
# A program that finds the library by pkg-config, and what has to hold across its border.
. "$(dirname "$0")/support.sh"
export PKG_CONFIG_PATH="$PREFIX/$LIBRARY_FOLDER/pkgconfig"

expect "compiler flags" "-I$PREFIX/$INCLUDE_FOLDER" \
    "$("$PKG_CONFIG" --cflags CppTools | sed 's/ *$//')"
expect "linker flags" "-L$PREFIX/$LIBRARY_FOLDER -lCppTools" \
    "$("$PKG_CONFIG" --libs CppTools | sed 's/ *$//')"
expect "version" "1.0.0" "$("$PKG_CONFIG" --modversion CppTools)"

# shellcheck disable=SC2046 # the flags are words
"$CXX" -std=c++20 -O2 -fvisibility=hidden -Wall -Wextra -Wpedantic -Wconversion -Werror \
    "$here/Stranger.cpp" -o "$scratch/stranger" \
    $("$PKG_CONFIG" --cflags --libs CppTools)

expect_run 0 "caught: Invalid name specified for MetaStruct: no name
a structure: yes
a list: no
its field is an integer: yes
its field is a string: no
called through the tool: yes
Error on command own work : the stranger's own reason
not the library's: 42" "" "$scratch/stranger"

# The line of the example's README.
# shellcheck disable=SC2046
"$CXX" -std=c++20 -fPIC -shared "$EXAMPLES/hello-library/FolderPlugin.cpp" -o "$scratch/folder.so" \
    $("$PKG_CONFIG" --cflags --libs CppTools)
expect_run 0 "[]" "" "$PREFIX/bin/tandril" --plugin "$scratch/folder.so" --formatter python \
    folder content list --path "$here" --kind link

finish
