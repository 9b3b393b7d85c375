#!/bin/sh
# Writes schemas/*.rng from schemas/*.rnc. `schemas.sh --check` writes nothing and fails when the
# files that are there are not what would be written; it shows the difference.
set -eu
cd "$(dirname "$0")/.."

./scripts/install-deps.sh schemas
written=$(mktemp -d)
trap 'rm -rf "$written"' EXIT
for grammar in descriptor result; do # each with what it includes
    trang "schemas/$grammar.rnc" "$written/$grammar.rng"
done

case ${1:-} in
'')
    cp "$written"/*.rng schemas/
    ;;
--check)
    mkdir "$written/present"
    cp schemas/*.rng "$written/present/"
    cd "$written"
    mkdir expected
    mv ./*.rng expected/
    diff -r -u present expected || {
        echo "schemas/*.rng are not what ./scripts/schemas.sh writes" >&2
        exit 1
    }
    ;;
*)
    echo "usage: schemas.sh [--check]" >&2
    exit 2
    ;;
esac
