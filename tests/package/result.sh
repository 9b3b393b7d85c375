#!/bin/sh
# The installed program that makes result documents, alone and behind a command of the host pack.
. "$(dirname "$0")/support.sh"
result=$PREFIX/bin/tandril-result

expect_run 0 "tandril-result $VERSION" "" "$result" --version
expect_run 0 '<?xml version="1.0" encoding="UTF-8"?>
<output><list type="int">
<int>3</int>
</list></output>' "" "$result" --from lines --list int -- echo 3
expect_run 1 "ERROR:--from is needed (tandril-result --help explains)" "" "$result"

cat >"$scratch/lsblk" <<'TOOL'
#!/bin/sh
cat <<'JSON'
{"blockdevices": [{"name": "sda", "type": "disk", "size": 7, "ro": false, "rm": false,
    "mountpoints": []}]}
JSON
TOOL
chmod +x "$scratch/lsblk"
PATH=$scratch:$PATH
expect_run 0 '[{"File System": """""", "Kind": """disk""", "Label": """""", "Mount Points": [], "Name": """sda""", "Parent": """""", "Read Only": False, "Removable": False, "Size": 7, "UUID": """""", }, ]' \
    "" "$PREFIX/bin/tandril" --plugin-dir "$PREFIX/lib/corvane/tandril" --formatter python \
    storage volume list

finish
