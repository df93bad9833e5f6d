#!/usr/bin/env bash
# Installs what is missing, builds a release, and starts the program in build/run, a folder of its own with the
# shipped part files. What you change there stays: the files are copied only where they are missing. Without a
# display it shows what it can do on a virtual one and leaves the results in build/run.
set -euo pipefail
cd "$(dirname "$0")"
. scripts/common.sh

# shellcheck disable=SC2086
need $build_packages
build release tarnwick

doing="filling build/run"
run=$PWD/build/run
mkdir -p "$run"
install -m 755 build/release/tarnwick "$run/tarnwick.new"
mv "$run/tarnwick.new" "$run/tarnwick"
for file in parts/*.ini; do
    [ -e "$run/${file##*/}" ] || install -m 644 "$file" "$run/"
done
ln -sfn ../../docs "$run/docs"   # What Help opens.
# Every port write is recorded here: as a text and as a waveform.
if ! grep -q '^LOG=.' "$run/tarnwick.ini"; then
    sed -i 's/^;*LOG=.*/LOG=port.log/; s/^;*TRACE=.*/TRACE=port.vcd/' "$run/tarnwick.ini"
fi

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    # Clients start this program too, until the session ends.
    [ ! -d "${XDG_RUNTIME_DIR:-}" ] || register_service "$XDG_RUNTIME_DIR/dbus-1/services" "$run"
    step "Starting Tarnwick in $run"
    doing="running Tarnwick"
    cd "$run" && ./tarnwick
else
    # shellcheck disable=SC2086
    need $screen_packages
    . scripts/demonstrate.sh
fi
