#!/bin/sh
# Where the time (callgrind) and the memory (heaptrack) of building and rendering rows go.
#
#     bench/profile.sh [--formatter NAME] [--rows N]
#     bench/profile.sh --write       renews the tables of docs/performance.md
set -eu
cd "$(dirname "$0")/.."
./scripts/install-deps.sh profile
. bench/build.sh

exec python3 bench/runner/profiles.py --build build/release "$@"
