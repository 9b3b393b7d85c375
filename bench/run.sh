#!/bin/sh
# Measures the engine and the tool beside what they cost at least and beside what else there is, in
# turns within one run, and prints one table.
#
#     bench/run.sh                       everything: five minutes on two cores
#     bench/run.sh --quick               small data, one round: does every program still run?
#     bench/run.sh --only NAME           one group: start descriptors commands rows reading extension
#                                        stream road parts
#     bench/run.sh --rounds N            rounds of turns (5)
#     bench/run.sh --tandril-build DIR   beside another build, whose target benchmarks is built
#     bench/run.sh --write               renews the table of docs/performance.md
set -eu
cd "$(dirname "$0")/.."
. bench/build.sh

exec python3 bench/runner/compare.py --build build/release "$@"
