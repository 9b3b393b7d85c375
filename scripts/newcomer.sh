#!/bin/sh
# A newcomer's session (tests/kit/session.sh) in a fresh Debian root, where this build is installed
# beside a compiler and nothing else. Needs root, and the package mirror that this machine uses.
set -eu
cd "$(dirname "$0")/.."

./scripts/install-deps.sh newcomer
cmake --preset release
cmake --build --preset release

root=$(mktemp -d)
trap 'umount "$root/proc" 2>/dev/null || true; rm -rf "$root"' EXIT
chmod 755 "$root" # root is warned of plug-ins below folders that others may change
release=$(sed -n 's/^VERSION_CODENAME=//p' /etc/os-release)
# shellcheck disable=SC2016 # apt fills this in
mirror=$(apt-get indextargets --format '$(REPO_URI)' 'Created-By: Packages' "Codename: $release" |
    head -n 1)
debootstrap --variant=minbase --include=cmake,g++,libxml2,make,pkg-config \
    "$release" "$root" "$mirror" >"$root.log" 2>&1 || {
    tail "$root.log" >&2
    exit 1
}
rm "$root.log"

DESTDIR=$root cmake --install build/release --prefix /usr >/dev/null
mkdir "$root/kit"
cp tests/kit/session.sh tests/package/support.sh "$root/kit"
mount -t proc proc "$root/proc"
in_root() {
    env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root chroot "$root" "$@"
}
in_root ldconfig
in_root /bin/sh /kit/session.sh
echo "The newcomer's session ends well."
