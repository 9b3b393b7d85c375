#!/bin/sh
# Counts which lines and branches of the library the tests reach. Fails when a line is reached by
# none and not explained in docs/testing.md, when one that is explained there is reached, or when
# fewer than 95 in 100 branches are taken. Pages that show every line: build/coverage/report/.
set -eu
cd "$(dirname "$0")/.."

# What earlier runs counted does not count.
[ ! -d build/coverage ] || find build/coverage -name '*.gcda' -delete
./scripts/test.sh coverage

report=build/coverage/report
mkdir -p "$report"
# Branches that only an exception takes are the compiler's, not ours.
gcovr --root . --object-directory build/coverage --filter CppTools/ \
    --exclude-throw-branches --exclude-unreachable-branches \
    --json "$report/counts.json" --html-details "$report/index.html" --print-summary
python3 scripts/coverage/gaps.py "$report/counts.json" docs/testing.md
