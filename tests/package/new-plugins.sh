#!/bin/sh
# The installed tools for plug-in authors, and the plug-ins that they begin, built by strangers.
. "$(dirname "$0")/support.sh"
devkit=$PREFIX/bin/tandril-devkit
cd "$scratch"

expect_run 0 "File       Purpose
---------  -------
disks.xml  the descriptor" "" "$devkit" plugin new --kind descriptor --name disks
expect_run 0 "File  Line  Severity  Rule  Message
----  ----  --------  ----  -------" "" "$devkit" plugin descriptor check --file disks.xml --strict
expect_run 0 '[{"Count": 3, "Name": """red""", }, ]' "" \
    "$devkit" --plugin disks.xml --formatter python disks show --colour red --count 3

# Through a link from elsewhere, too.
mkdir links
ln -s "$devkit" links/devkit
expect "status through a link" 0 "$(status_of links/devkit plugin template show --file disks.xml \
    --command disks.show --set colour=red --set count=3)"

# show_colour PLUGIN: calls the library's command
show_colour() {
    "$PREFIX/bin/tandril" --plugin "$1" --formatter python colours show -c blue -n 2
}

mkdir library
expect "status of a new library" 0 \
    "$(status_of "$devkit" plugin new --kind library --name colours --directory library)"
expect "status of CMake" 0 "$(status_of "$CMAKE" -S library -B library/build \
    -DCMAKE_PREFIX_PATH="$PREFIX" -DCMAKE_CXX_COMPILER="$CXX")"
expect "status of the build" 0 "$(status_of "$CMAKE" --build library/build)"
expect_run 0 '[{"Count": 2, "Name": """blue""", }, ]' "" show_colour library/build/colours.so

export PKG_CONFIG_PATH="$PREFIX/$LIBRARY_FOLDER/pkgconfig"
expect "status of make" 0 "$(status_of make -C library CXX="$CXX" PKG_CONFIG="$PKG_CONFIG")"
expect_run 0 '[{"Count": 2, "Name": """blue""", }, ]' "" show_colour library/colours.so

finish
