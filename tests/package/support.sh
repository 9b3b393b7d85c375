# shellcheck shell=sh disable=SC2034 # used by those who source it
# What the scripts of this folder share. To be sourced.
set -eu

# The words of messages are compared.
export LC_ALL=C.UTF-8 LANG=C.UTF-8

here=$(cd "$(dirname "$0")" && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
failures=0

fail() {
    printf 'FAILED: %s\n' "$*" >&2
    failures=$((failures + 1))
}

# expect WHAT EXPECTED ACTUAL
expect() {
    if [ "$2" != "$3" ]; then
        fail "$1"
        printf '%s\n' "$2" >"$scratch/expected"
        printf '%s\n' "$3" >"$scratch/actual"
        diff -u "$scratch/expected" "$scratch/actual" >&2 || true
    fi
}

# The exit status of a command, its output in $scratch/out and its errors in $scratch/err.
status_of() {
    status=0
    "$@" >"$scratch/out" 2>"$scratch/err" || status=$?
    echo "$status"
}

# expect_run STATUS OUTPUT ERRORS COMMAND...
expect_run() {
    expected_status=$1 expected_output=$2 expected_errors=$3
    shift 3
    expect "status of $*" "$expected_status" "$(status_of "$@")"
    expect "output of $*" "$expected_output" "$(cat "$scratch/out")"
    expect "errors of $*" "$expected_errors" "$(cat "$scratch/err")"
}

finish() {
    [ "$failures" -eq 0 ] || exit 1
}
