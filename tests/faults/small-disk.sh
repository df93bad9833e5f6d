#!/usr/bin/env bash
# usage: small-disk.sh COMMAND [ARGUMENT...]
# Runs a command where temporary files go to a disk of 1 MB that nobody else sees, and where it may mount more.
# Exits with 77 where the system doesn't let an ordinary user do that.
set -euo pipefail
if ! reason=$(unshare --map-root-user --mount mount -t tmpfs disk /mnt 2>&1); then
    echo "SKIPPED: no disk of its own can be mounted here: $reason"
    exit 77
fi
TMPDIR=$(mktemp -d)
export TMPDIR
trap 'rmdir "$TMPDIR"' EXIT
# shellcheck disable=SC2016
unshare --map-root-user --mount bash -c 'mount -t tmpfs -o size=1m disk "$TMPDIR" && exec "$@"' - "$@"
