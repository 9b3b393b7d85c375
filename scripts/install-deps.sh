#!/bin/sh
# Installs the Debian packages that building and testing need, and a group more when it is named,
# such as `install-deps.sh bench` for the benchmarks; the groups stand below. Only what is missing is
# installed; with nothing missing neither root nor the network is needed. Asks nothing.
set -eu

packages="
    abigail-tools
    clang-format
    cmake
    g++
    gcovr
    googletest
    iproute2
    libboost1.81-dev
    libgmock-dev
    libgtest-dev
    libutfcpp-dev
    libxml2-dev
    libxml2-utils
    make
    mount
    ninja-build
    nlohmann-json3-dev
    pkg-config
    procps
    python3
    util-linux
"
case ${1:-} in
bench)
    packages="$packages
    bsdextrautils
    jq
    libbenchmark-dev
    libcli11-dev
    python3-lxml
    rapidjson-dev
"
    ;;
reference)
    packages="$packages
    doxygen
"
    ;;
fuzz)
    packages="$packages
    clang
    libclang-rt-dev
    llvm
"
    ;;
newcomer)
    packages="$packages
    debootstrap
"
    ;;
profile)
    packages="$packages
    heaptrack
    valgrind
"
    ;;
schemas)
    packages="$packages
    trang
"
    ;;
valgrind)
    packages="$packages
    libc6-dbg
    valgrind
"
    ;;
esac

missing=""
for package in $packages; do
    state=$(dpkg-query --show --showformat='${db:Status-Abbrev}' "$package" 2>/dev/null || true)
    case $state in
    ii*) ;;
    *) missing="$missing $package" ;;
    esac
done
[ -n "$missing" ] || exit 0

echo "Installing:$missing"
export DEBIAN_FRONTEND=noninteractive
apt-get update --quiet
# shellcheck disable=SC2086 # one word for each package
apt-get install --yes --quiet --no-install-recommends $missing
