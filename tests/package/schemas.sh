#!/bin/sh
# The installed grammars, as xmllint is given them and as editors find them from a descriptor.
. "$(dirname "$0")/support.sh"
schemas=$PREFIX/$DATA_FOLDER/tandril/schemas
pack=$PREFIX/lib/corvane/tandril

# expect_valid FILE GRAMMAR OPTION
expect_valid() {
    expect_run 0 "" "$1 validates" xmllint --nonet --noout "$3" "$schemas/$2" "$1"
}

expect "grammars" \
    "descriptor.rnc descriptor.rng descriptor.xsd result.rnc result.rng result.xsd values.rnc values.rng values.xsd" \
    "$(cd "$schemas" && echo ./* | sed 's,\./,,g')"

for descriptor in "$EXAMPLES/hello-descriptor/lines.xml" "$pack"/*.xml; do
    expect_valid "$descriptor" descriptor.rng --relaxng
    expect_valid "$descriptor" descriptor.xsd --schema
done

for descriptor in "$pack"/*.xml; do
    named=$(sed -n 's/^<?xml-model href="\([^"]*\)" .*/\1/p' "$descriptor")
    expect "grammar that $descriptor names" "$(realpath "$schemas/descriptor.rng")" \
        "$(realpath "$pack/$named")"
done

"$PREFIX/libexec/tandril/tandril-host-facts" parameter get --name=kernel.ostype \
    >"$scratch/result.xml"
expect_valid "$scratch/result.xml" result.rng --relaxng
expect_valid "$scratch/result.xml" result.xsd --schema

echo '<tandril-extension><version>1.0</version><commands/></tandril-extension>' >"$scratch/old.xml"
expect "status for an old descriptor" 3 \
    "$(status_of xmllint --noout --relaxng "$schemas/descriptor.rng" "$scratch/old.xml")"

finish
