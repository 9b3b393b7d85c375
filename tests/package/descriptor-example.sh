#!/bin/sh
# The descriptor, loaded from outside of this tree by the installed tool.
. "$(dirname "$0")/support.sh"

cp -R "$EXAMPLES/hello-descriptor" "$scratch/descriptor"
cd "$scratch"
cat >story.txt <<'STORY'
A beta came before the alpha.
Beta <b> & "q" 'x' \n $HOME
none
STORY

find_line() {
    "$PREFIX/bin/tandril" --plugin-dir descriptor "$@"
}

expect_run 0 "Number  Text
------  ----
     1  A beta came before the alpha." \
    "" find_line text line find --file story.txt --text beta

expect_run 0 "Number  Text
------  ----
     1  A beta came before the alpha.
     2  Beta <b> & \"q\" 'x' \\n \$HOME" \
    "" find_line text line find -f story.txt -t BETA --ignore-case

expect_run 0 '[{"Number": 1, "Text": """A beta came before the alpha.""", }, ]' "" \
    find_line --formatter python text line find -f story.txt -t e -l 1

# What would be a command, a placeholder or an option elsewhere is but text here.
expect_run 0 "Number  Text
------  ----
     2  Beta <b> & \"q\" 'x' \\n \$HOME" \
    "" find_line text line find -f story.txt -t "& \"q\" 'x' \\n \$HOME"
# shellcheck disable=SC2016 # nothing is to be expanded here
expect_run 0 "" "" find_line text line find -f story.txt --text='--$(touch trace)`touch trace`;'
[ ! -e trace ] || fail "the text that was looked for was run"

expect_run 1 "" "Errors: 
Unable to read nothing.txt" find_line text line find -f nothing.txt -t x

expect_run 1 "" "Errors: 
Invalid data constraint for parameter 'limit'. Expected integer in the range 1-1000000
Missing required parameter --file
Missing required parameter --text" find_line text line find --limit 0

finish
