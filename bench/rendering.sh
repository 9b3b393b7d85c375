#!/bin/sh
# How rendering grows with the number of rows, for each formatter. Time for each row should stay
# as it is, and the peak of memory should hardly grow over what the rows themselves hold.
#
#     bench/rendering.sh [rows]
set -eu
cd "$(dirname "$0")/.."
rows=${1:-100000}

./scripts/install-deps.sh
cmake --preset release >/dev/null
cmake --build --preset release --target rendering >/dev/null

for formatter in json xml python table simple; do
    for count in $((rows / 4)) $((rows / 2)) "$rows" $((rows * 2)); do
        build/release/bench/rendering "$formatter" "$count"
    done
done
