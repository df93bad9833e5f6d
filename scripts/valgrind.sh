#!/usr/bin/env bash
# Looks for memory that a session with so many device changes has lost. Exit code 1 if there is any.
# usage: scripts/valgrind.sh [changes (10)]
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/common.sh

# shellcheck disable=SC2086
need $build_packages $test_packages valgrind
build dev test_robot
doing="looking for leaks (see build/valgrind.log)"
step "Changing devices under valgrind"
# Qt's own caches live to the end: only what nothing points to any more counts.
QT_QPA_PLATFORM=offscreen valgrind --quiet --leak-check=full --show-leak-kinds=definite --errors-for-leak-kinds=definite \
    --error-exitcode=1 --log-file=build/valgrind.log --num-callers=30 build/dev/tests/test_robot devices "${1:-10}" || {
    grep -v '^==[0-9]*== *$' build/valgrind.log | head -n 60
    exit 1
}
step "No definite leak"
