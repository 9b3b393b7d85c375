#!/bin/sh
# The installed host pack calls the installed program, wherever the build tree was.
. "$(dirname "$0")/support.sh"
pack=$PREFIX/lib/corvane/tandril

expect "descriptors that call another program" "" \
    "$(grep '<execute>' "$pack"/*.xml | grep -vF "<execute>'$PREFIX/libexec/" || true)"
expect_run 0 \
    '[{"Name": """kernel.ostype""", "Problem": """""", "Readable": True, "Value": """Linux""", "Writable": False, }, ]' \
    "" "$PREFIX/bin/tandril" --plugin-dir "$pack" --formatter python \
    kernel parameter get --name kernel.ostype

finish
