#!/usr/bin/env bash
# Builds what ships and makes the Debian package of it in build/package.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/common.sh

# shellcheck disable=SC2086
need $build_packages dpkg-dev file
build release
doing="making the package"
rm -f build/package/*.deb   # Of an earlier version.
cpack --config build/release/CPackConfig.cmake -B build/package >build/package.log 2>&1 || { cat build/package.log >&2; exit 1; }
step "Made: $(ls build/package/*.deb)"
