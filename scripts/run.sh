#!/bin/sh
# Builds the tool and runs it with the host pack loaded. Without arguments it gives a short tour.
set -eu
cd "$(dirname "$0")/.."

build() {
    ./scripts/install-deps.sh &&
        cmake --preset release &&
        cmake --build --preset release --target tandril tandril-host-facts tandril-result
}

tandril() {
    ./build/release/tandril/tandril --plugin-dir build/release/plugins/host "$@"
}

# A tour shows refusals too: a listing is no success.
show() {
    printf '\n$ tandril %s\n' "$*"
    tandril "$@" || true
}

# Standard output belongs to the tool; what the build says is only shown when it fails.
mkdir -p build
if ! build >build/run.log 2>&1; then
    cat build/run.log >&2
    exit 1
fi

if [ $# -gt 0 ]; then
    tandril "$@"
    exit
fi

show
show tandril command list
show storage filesystem list
show --formatter json storage filesystem list
show system process list --help
