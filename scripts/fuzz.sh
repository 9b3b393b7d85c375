#!/bin/sh
# Builds the fuzzers with clang and runs them one after the other:
#
#     scripts/fuzz.sh                         each for a minute
#     scripts/fuzz.sh --seconds N TARGET...   only some, for so long: descriptors documents formats
#                                             options templates wrapping
#
# What a fuzzer found on its way stays in build/fuzz/found/TARGET, and it goes on from there. Ends at
# the first input that breaks a law, which is left in build/fuzz/broken/; once mended, it belongs into
# fuzz/regressions/TARGET/.
set -eu
cd "$(dirname "$0")/.."

seconds=60
if [ "${1:-}" = --seconds ]; then
    seconds=$2
    shift 2
fi
[ $# -gt 0 ] || set -- descriptors documents formats options templates wrapping

./scripts/install-deps.sh fuzz
cmake --preset fuzz

mkdir -p build/fuzz/broken
for target; do
    cmake --build --preset fuzz --target "fuzz_$target"
    found=build/fuzz/found/$target
    mkdir -p "$found"
    set -- "$found"
    for folder in "fuzz/corpus/$target" "fuzz/regressions/$target"; do
        [ ! -d "$folder" ] || set -- "$@" "$folder"
    done
    # Some long texts take libxml2 quadratic time, so no input is long.
    ASAN_OPTIONS=malloc_context_size=4:quarantine_size_mb=16 \
        UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
        "build/fuzz/fuzz/fuzz_$target" -dict="fuzz/$target.dict" -max_len=2048 -timeout=10 \
        -max_total_time="$seconds" -print_final_stats=1 \
        -artifact_prefix="build/fuzz/broken/$target-" "$@"
done
