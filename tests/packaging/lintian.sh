# usage: lintian.sh PACKAGE_FOLDER
set -euo pipefail
lintian --allow-root --fail-on error --fail-on warning "$1/tarnwick.deb"
