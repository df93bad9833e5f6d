#!/usr/bin/env bash
# Builds what ships and the benchmark, and prints its table; see docs/performance.md. Exit code 1 if a goal is missed.
# usage: scripts/bench.sh [growth | group ...]     groups: core burst window automation start
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/common.sh

# shellcheck disable=SC2086
need $build_packages libgtest-dev xvfb dbus
build bench tarnwick_bench
doing="measuring"
step "Measuring"
build/bench/bench/tarnwick_bench "$@"
