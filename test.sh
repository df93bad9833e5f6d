#!/usr/bin/env bash
# Installs what is missing, builds, and runs every test. May be run again and again.
# usage: ./test.sh [preset] [ctest options]     preset: dev (default) or asan
set -euo pipefail
cd "$(dirname "$0")"
. scripts/common.sh

preset=dev
case ${1:-} in
    dev | asan)
        preset=$1
        shift
        ;;
esac

# shellcheck disable=SC2086
need $build_packages $test_packages
build "$preset"
doing="running the tests"
step "Testing ($preset)"
ctest --preset "$preset" -j "$(nproc)" "$@"
