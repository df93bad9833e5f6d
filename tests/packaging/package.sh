# usage: package.sh BUILD_FOLDER PACKAGE_FOLDER     Makes the Debian package from what is built: tarnwick.deb.
set -euo pipefail
mkdir -p "$2"
made=$(mktemp -d "$2/XXXXXX")
trap 'rm -rf "$made"' EXIT
cpack --config "$1/CPackConfig.cmake" -B "$made"
mv "$made"/tarnwick_*.deb "$2/tarnwick.deb"
