#!/bin/sh
# Makes the reference of the public headers: docs/api/index.html, classes grouped by subsystem.
# Fails when a public name has no documentation. `--check` only looks and leaves no pages.
set -eu
cd "$(dirname "$0")/.."

./scripts/install-deps.sh reference
headers=$(sed -n '/^set(public_headers/,/)/s,^ *\([A-Za-z/]*\.h\)).*\|^ *\([A-Za-z/]*\.h\)$,CppTools/\1\2,p' \
    CppTools/CMakeLists.txt)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

pages=docs/api
if [ "${1:-}" = --check ]; then
    pages=$scratch/api
fi
rm -rf "$pages"
mkdir -p "$pages"
{
    cat scripts/reference/Doxyfile
    echo "INPUT = scripts/reference/subsystems.dox $(echo "$headers" | tr '\n' ' ')"
    echo "HTML_OUTPUT = $pages"
    echo "WARN_LOGFILE = $scratch/remarks"
    sed -n 's/^project(CppTools VERSION \([^ ]*\).*/PROJECT_NUMBER = \1/p' CMakeLists.txt
} | doxygen -

if [ -s "$scratch/remarks" ]; then
    sort -u "$scratch/remarks" >&2
    exit 1
fi
