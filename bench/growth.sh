#!/bin/sh
# How cost grows with size, by doubling: one file of figures for each curve under
# build/release/bench/growth, and the measured exponents as a table.
#
#     bench/growth.sh               everything: seven minutes on two cores, 7 GB of memory
#     bench/growth.sh --max N       no size above N
#     bench/growth.sh --only NAME   one curve: rows commands descriptors columns nesting value
#                                   parameters path template option
#     bench/growth.sh --write       renews the table and the plots of docs/performance.md
set -eu
cd "$(dirname "$0")/.."
. bench/build.sh

exec python3 bench/runner/growth.py --build build/release "$@"
