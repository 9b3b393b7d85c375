# shellcheck shell=sh
# Read by run.sh and growth.sh: builds the programs, and speaks only when that fails. Debian's own
# python3 is the one that Debian's Python packages are for.
PATH=/usr/bin:$PATH
# A language is set, since the engine would set one in its shell lines and the floors would not.
LANG=C.UTF-8
export PATH LANG PYTHONPATH="$PWD/bench/data" PYTHONDONTWRITEBYTECODE=1
mkdir -p build
if ! {
    ./scripts/install-deps.sh bench &&
        cmake --preset release &&
        cmake --build --preset release --target benchmarks
} >build/bench.log 2>&1; then
    cat build/bench.log >&2
    exit 1
fi
