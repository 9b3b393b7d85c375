#!/bin/sh
# The plug-in library, built outside of this tree against the installed copy and loaded by the
# installed tool.
. "$(dirname "$0")/support.sh"

cp -R "$EXAMPLES/hello-library" "$scratch/library"
cd "$scratch/library"
build() {
    "$CMAKE" -S . -B build -DCMAKE_PREFIX_PATH="$PREFIX" -DCMAKE_CXX_COMPILER="$CXX" \
        -DCMAKE_CXX_FLAGS="-Wall -Wextra -Wpedantic -Wconversion -Werror" &&
        "$CMAKE" --build build
}
if ! build >"$scratch/log" 2>&1; then
    cat "$scratch/log" >&2
    fail "the example does not build"
    finish
fi
expect "where the library was found" "$PREFIX/$LIBRARY_FOLDER/cmake/CppTools" \
    "$(sed -n 's/^CppTools_DIR:PATH=//p' build/CMakeCache.txt)"

tandril() {
    "$PREFIX/bin/tandril" --plugin build/folder.so "$@"
}

mkdir -p "$scratch/box/inner"
printf '12345' >"$scratch/box/numbers"
printf 'x' >"$scratch/box/.hidden"
ln -s numbers "$scratch/box/shortcut"

expect_run 0 "Size  Kind    Name
----  ------  ----
 0 B  folder  inner
 5 B  file    numbers
 0 B  link    shortcut" "" tandril folder content list --path "$scratch/box"

expect_run 0 '[{"Kind": """file""", "Name": """.hidden""", "Size": 1, }, {"Kind": """file""", "Name": """numbers""", "Size": 5, }, {"Kind": """link""", "Name": """shortcut""", "Size": 0, }, ]' \
    "" "$PREFIX/bin/tandril" --plugin build/folder.so --formatter python folder content list \
    -p "$scratch/box" --hidden -k file --kind=link

expect_run 0 "FolderCount:
   Files  : 2
   Bytes  : 6
   Folders: 1
   Links  : 1
   Others : 0" "" tandril folder content count --path "$scratch/box"

for command in list count; do
    expect_run 1 "" "Errors: 
Unable to read folder /nowhere: No such file or directory" \
        tandril folder content $command --path /nowhere
done

expect_run 1 "" "Errors: 
Invalid data constraint for parameter 'kind'. Expected a single value from the set [file, folder, link, other] got 'door'
Missing required parameter --path" tandril folder content list --kind door

expect_run 0 "Namespace       Command  Description
--------------  -------  -----------
folder.content  count    Count what a folder holds.
folder.content  list     List what a folder holds." \
    "" tandril tandril command list -n folder

finish
