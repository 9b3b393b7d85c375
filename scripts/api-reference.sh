#!/bin/sh
# Makes the reference of the public headers: docs/api/index.html, classes grouped by subsystem.
# Fails when a public name has no documentation. `--check` only looks and leaves no pages.
set -eu
cd "$(dirname "$0")/.."

./scripts/install-deps.sh reference
pages=docs/api
headers=$(sed -n '/^set(public_headers/,/)/s,^ *\([A-Za-z/]*\.h\)).*\|^ *\([A-Za-z/]*\.h\)$,CppTools/\1\2,p' CppTools/CMakeLists.txt)
remarks=$(mktemp)
trap 'rm -f "$remarks"' EXIT

if [ "${1:-}" = --check ]; then
    output=NO
else
    output=YES
    rm -rf "$pages"
    mkdir -p "$pages"
fi
{
    cat scripts/reference/Doxyfile
    echo "INPUT = scripts/reference/subsystems.dox $(echo "$headers" | tr '\n' ' ')"
    echo "GENERATE_HTML = $output"
    echo "HTML_OUTPUT = $pages"
    echo "WARN_LOGFILE = $remarks"
    sed -n 's/^project(CppTools VERSION \([^ ]*\).*/PROJECT_NUMBER = \1/p' CMakeLists.txt
} | doxygen -

if [ -s "$remarks" ]; then
    sort -u "$remarks" >&2
    exit 1
fi
