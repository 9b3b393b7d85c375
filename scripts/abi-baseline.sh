#!/bin/sh
# Describes the binary interface of the release library anew. For changes of it that are meant.
set -eu
cd "$(dirname "$0")/.."

cmake --preset release
cmake --build --preset release --target CppTools
abidw --no-corpus-path --no-comp-dir-path --no-show-locs --no-parameter-names --no-elf-needed \
    --type-id-style hash --exported-interfaces-only --drop-private-types --headers-dir CppTools \
    --out-file abi/CppTools.abi build/release/CppTools/libCppTools.so
# Where this tree happens to lie is no part of the interface.
sed -i "s|path='$PWD/|path='|" abi/CppTools.abi
