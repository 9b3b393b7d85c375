#!/bin/sh
# The installed host pack calls the installed programs, wherever the build tree was.
. "$(dirname "$0")/support.sh"
pack=$PREFIX/lib/corvane/tandril

# Every command names one of the two, by its full path.
programs=$(sed -n "s|.*'\\(/[^']*/tandril-[a-z-]*\\)'.*|\\1|p" "$pack"/*.xml)
expect "programs that the descriptors call" "$PREFIX/bin/tandril-result
$PREFIX/libexec/tandril/tandril-host-facts" "$(printf '%s\n' "$programs" | sort -u)"
expect "commands that call one" "$(cat "$pack"/*.xml | grep -c '<execute>')" \
    "$(printf '%s\n' "$programs" | grep -c .)"

# Where the build tree belongs to somebody else, root is warned of descriptors in it.
cp -R "$pack" "$scratch/pack"
expect_run 0 \
    '[{"Name": """kernel.ostype""", "Problem": """""", "Readable": True, "Value": """Linux""", "Writable": False, }, ]' \
    "" "$PREFIX/bin/tandril" --plugin-dir "$scratch/pack" --formatter python \
    kernel parameter get --name kernel.ostype

finish
