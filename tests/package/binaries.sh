#!/bin/sh
# What the installed binaries are linked with and how they are hardened.
. "$(dirname "$0")/support.sh"
library=$PREFIX/$LIBRARY_FOLDER/libCppTools.so
tool=$PREFIX/bin/tandril

dynamic() {
    "$READELF" --wide --dynamic "$1"
}

# needs FILE: the libraries that the loader looks for, one a line
needs() {
    dynamic "$1" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p'
}

expect "name of the library's interface" "libCppTools.so.1" \
    "$(dynamic "$library" | sed -n 's/.*(SONAME).*\[\(.*\)\]/\1/p')"
expect "the file that the linker finds" "libCppTools.so.1" "$(readlink "$library")"

expect "the tool is position-independent" "DYN (Position-Independent Executable file)" \
    "$("$READELF" --file-header "$tool" | sed -n 's/.*Type: *//p')"

find "$PREFIX" -type f '(' -perm -u+x -o -name 'lib*.so.*' ')' >"$scratch/programs"
[ "$(wc -l <"$scratch/programs")" -ge 2 ] || fail "the tool or the library is not installed"
while read -r file; do
    [ "$(head -c 2 "$file")" != "#!" ] || continue
    dynamic "$file" | grep -q 'FLAGS_1.*NOW' || fail "$file binds its symbols lazily"
    "$READELF" --wide --segments "$file" | grep -q GNU_RELRO || fail "$file has no RELRO segment"
    "$READELF" --wide --segments "$file" | grep -q 'GNU_STACK.* RW ' ||
        fail "$file has a stack that can be executed"
    "$READELF" --wide --dyn-syms "$file" | grep -q __stack_chk_fail ||
        fail "$file has no stack protector"
    if needs "$file" | grep -i boost; then
        fail "$file needs a Boost library"
    fi
    if dynamic "$file" | grep -E '\((RPATH|RUNPATH)\)' | grep -F "$BUILD_TREE"; then
        fail "$file looks for libraries in the build tree"
    fi
done <"$scratch/programs"

finish
