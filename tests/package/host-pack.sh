#!/bin/sh
# The installed host pack calls the installed program, wherever the build tree was.
. "$(dirname "$0")/support.sh"
pack=$PREFIX/lib/corvane/tandril

expect "descriptors that call another program" "" \
    "$(grep '<execute>' "$pack"/*.xml | grep -vF "<execute>'$PREFIX/libexec/" || true)"

# Where the build tree belongs to somebody else, root is warned of descriptors in it.
cp -R "$pack" "$scratch/pack"
expect_run 0 \
    '[{"Name": """kernel.ostype""", "Problem": """""", "Readable": True, "Value": """Linux""", "Writable": False, }, ]' \
    "" "$PREFIX/bin/tandril" --plugin-dir "$scratch/pack" --formatter python \
    kernel parameter get --name kernel.ostype

finish
