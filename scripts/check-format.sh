#!/bin/sh
# Fails when a C++ source is not formatted as .clang-format says; shows where.
set -eu
cd "$(dirname "$0")/.."

./scripts/install-deps.sh
find CppTools tandril tandril-result plugins devkit examples bench fuzz tests \
    \( -name '*.cpp' -o -name '*.h' \) -print0 2>/dev/null |
    xargs -0 clang-format --dry-run --Werror
