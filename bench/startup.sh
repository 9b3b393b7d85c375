#!/bin/sh
# How long the tool takes to start, list its one built-in command and end, beside a program that
# loads the same libraries and only returns. The goal is 3 times that or less.
#
#     bench/startup.sh [rounds]
set -eu
cd "$(dirname "$0")/.."
rounds=${1:-200}

./scripts/install-deps.sh
cmake --preset release >/dev/null
cmake --build --preset release --target tandril startup-floor time-commands >/dev/null

build/release/bench/time-commands "$rounds" \
    build/release/bench/startup-floor \
    "build/release/tandril/tandril tandril command list" \
    "build/release/tandril/tandril tandril command list --help"
