#!/bin/sh
# Runs filled templates in a real shell: which values are safe in which place, and whether what the
# checker of templates accepts holds against values that attack it.
#
#     scripts/template-safety.sh            1.6 million lines for the tables, a million pairs of template
#                                           and values, 20,000 of them by the shell
#     scripts/template-safety.sh --quick    without values of three special characters; 50,000 pairs
#     scripts/template-safety.sh --write    also renews the tables of docs/template-safety.md
#     CPPTOOLS_TEST_SEED=N                  other templates and values
set -eu
cd "$(dirname "$0")/.."

quick=""
write=""
for word in "$@"; do
    case $word in
    --quick) quick=--quick ;;
    --write) write=yes ;;
    *)
        echo "unknown option: $word" >&2
        exit 2
        ;;
    esac
done
pairs=1000000
lines=20000
if [ -n "$quick" ]; then
    pairs=50000
    lines=1000
fi

./scripts/install-deps.sh
cmake --preset release >/dev/null
cmake --build --preset release --target template_safety_table template_acceptance >/dev/null

tables=$(mktemp)
page=$(mktemp)
trap 'rm -f "$tables" "$page"' EXIT
build/release/tests/templates/template_acceptance "$pairs" "$lines" "${CPPTOOLS_TEST_SEED:-1}" |
    tee "$tables"
echo >>"$tables"
# shellcheck disable=SC2086 # no word when empty
build/release/tests/templates/template_safety_table $quick >>"$tables"
if [ -n "$write" ]; then
    mark="<!-- scripts/template-safety.sh --write puts what follows -->"
    sed "/^$mark\$/q" docs/template-safety.md >"$page"
    { echo && cat "$tables"; } >>"$page"
    cat "$page" >docs/template-safety.md
fi
