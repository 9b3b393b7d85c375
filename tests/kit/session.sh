#!/bin/sh
# A newcomer's session, on a machine where the tool is installed and nothing else of this project is:
# from an empty folder to an installed command, for both kinds of plug-in.
# shellcheck source=tests/package/support.sh
. "$(dirname "$0")/support.sh"
cd "$scratch"
plugins=/usr/lib/corvane/tandril/ext

expect_silence() {
    expect "status of $*" 0 "$(status_of "$@")"
    expect "errors of $*" "" "$(cat "$scratch/err")"
}

no_findings="File  Line  Severity  Rule  Message
----  ----  --------  ----  -------"

# A descriptor: begun, changed, checked, looked at, tried, installed, used.
expect_run 0 "File       Purpose
---------  -------
paint.xml  the descriptor" "" tandril-devkit plugin new --kind descriptor --name paint
expect_run 1 "" "Errors: 
Error on command plugin new : paint.xml exists already; nothing was written" tandril-devkit plugin new --kind descriptor --name paint
sed -i 's|<enum-value value="blue">like the sky</enum-value>|&\n              <enum-value value="green">like grass</enum-value>|' \
    paint.xml
expect_run 0 "$no_findings" "" tandril-devkit plugin descriptor check --file paint.xml --strict
expect_run 0 "FilledTemplate:
   Line: printf '<output><list type=\"structure\"><structure typeName=\"Colour\"><field name=\"Name\"><string>%s</string></field><field name=\"Count\"><int>%s</int></field></structure></list></output>' green 7
   Stdin: 
   Form: a simple command
   Words: printf, <output><list type=\"structure\"><structure typeName=\"Colour\"><field name=\"Name\"><string>%s</string></field><field name=\"Count\"><int>%s</int></field></structure></list></output>, green, 7" \
    "" tandril-devkit plugin template show --file paint.xml --command paint.show \
    --set colour=green --set count=7
expect_run 0 "Name   Count
-----  -----
green      7  " "" tandril --plugin paint.xml paint show --colour green --count 7
cp paint.xml "$plugins"
expect_run 0 '[{"Count": 7, "Name": """green""", }, ]' "" \
    tandril --formatter python paint show -c green -n 7
expect_run 1 "" "Errors: 
Invalid data constraint for parameter 'colour'. Expected a single value from the set [red, blue, green] got 'black'
Missing required parameter --count" tandril paint show --colour black

# What the newcomer breaks is found before it is installed.
# shellcheck disable=SC2016 # nothing is to be expanded here
sed 's/\$val{colour}/"&"/' paint.xml >broken.xml
expect "status of the check of a broken descriptor" 0 \
    "$(status_of tandril-devkit plugin descriptor check --file broken.xml --strict)"
sed -i 's/{count}/{number}/' broken.xml
expect "status of the check of a wrong name" 1 \
    "$(status_of tandril-devkit plugin descriptor check --file broken.xml)"

# A library: begun, built, tried, installed, used.
mkdir library
expect_silence tandril-devkit plugin new --kind library --name shapes --directory library
sed -i 's/"red"/"round"/g; s/"blue"/"square"/g' library/*.cpp
expect_silence cmake -S library -B library/build
expect_silence cmake --build library/build
expect_run 0 '[{"Count": 2, "Name": """round""", }, ]' "" \
    tandril --plugin library/build/shapes.so --formatter python shapes show -c round -n 2
expect_silence cmake --install library/build --prefix /usr
expect_run 0 '[{"Count": 3, "Name": """square""", }, ]' "" \
    tandril --formatter python shapes show -c square -n 3

# Both stand in the listing, with what came with the tool.
expect "namespaces of the newcomer" "paint
shapes" "$(tandril --formatter python tandril command list |
    grep -o '"Namespace": """[a-z.]*"""' | sed 's/.*"""\([a-z.]*\)"""/\1/' | grep -x 'paint\|shapes' | sort -u)"
rm -f "$plugins/paint.xml" "$plugins/shapes.so"
expect "status of a command that is gone" 1 "$(status_of tandril paint show -c red -n 1)"

finish
