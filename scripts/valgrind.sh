#!/bin/sh
# Runs the suite's programs under valgrind's memcheck. A wrong access, a decision by memory that was
# never written and memory that nothing points to any more fail the test in which they show.
#
#   scripts/valgrind.sh                    every program; takes an hour
#   scripts/valgrind.sh --quick            the quick programs: half a minute
#   scripts/valgrind.sh metaobj callspec   these programs
#
# What the tests start runs without valgrind; what they fork does not. Left out is what waits for a
# process to be stopped: under valgrind none is.
set -eu
cd "$(dirname "$0")/.."

if [ "${1:-}" = --quick ]; then
    shift
    set -- metaobj callspec host "$@"
fi

./scripts/install-deps.sh valgrind
cmake --preset release
programs=""
for program in "$@"; do
    programs="$programs ${program%_tests}_tests"
done
if [ -n "$programs" ]; then
    # shellcheck disable=SC2086 # one word for each program
    cmake --build --preset release --target $programs
else
    cmake --build --preset release
    programs=$(find build/release/tests -type f -name '*_tests' -printf '%f\n' | sort)
fi

failed=""
for program in $programs; do
    echo "== $program"
    path=$(find build/release/tests -type f -name "$program")
    # Programs that count their own allocations keep their own operators for that.
    valgrind --quiet --soname-synonyms=somalloc=nouserintercepts --error-exitcode=99 \
        --leak-check=full --show-leak-kinds=definite --errors-for-leak-kinds=definite \
        --suppressions=scripts/valgrind.supp \
        "$path" --gtest_brief=1 --gtest_filter='-*Suspension*' || failed="$failed $program"
done
[ -z "$failed" ] || {
    echo "failed under valgrind:$failed" >&2
    exit 1
}
