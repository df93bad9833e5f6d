#!/usr/bin/env bash
# Makes the pictures of the documents anew: the real program on a virtual display, worked by keys as a user would. Takes
# the folder of the build, by default build/release.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/common.sh

# shellcheck disable=SC2086
need $screen_packages
images=$PWD/docs/images
folder=$(mktemp -d)
xvfb='' bus='' tarnwick=''
trap 'status=$?; kill $tarnwick $bus $xvfb 2>/dev/null || true; rm -rf "$folder"; [ $status -eq 0 ] || printf "\nFAILED while %s (exit code %s).\n" "$doing" "$status" >&2' EXIT
mkdir -p "$images"

size=1224x740   # The window's at the first start; the screen has room for it and a frame.
start_display 1240x788x24

doing="starting Tarnwick"
install -m 755 "${1:-build/release}/tarnwick" "$folder/tarnwick"
cp parts/*.ini "$folder"
dbus-daemon --session --nofork --nosyslog --print-address=1 >"$folder/.bus" 2>/dev/null &
bus=$!
DBUS_SESSION_BUS_ADDRESS=$(text_of "$folder/.bus")
export DBUS_SESSION_BUS_ADDRESS
XDG_CONFIG_HOME=$folder/config "$folder/tarnwick" 2>/dev/null &
tarnwick=$!

keys() { xdotool key --delay 60 "$@"; }
shoot() {   # FILE
    sleep 0.5
    import -window root -crop "$size+0+0" +repage +dither -colors 64 -strip "$images/$1"
}

pick_fractional

doing="taking the pictures"
shoot first-2-reference.png   # The PLL's page comes by itself.
keys ctrl+f Home shift+End
xdotool type 1925.0305
keys Return
shoot first-3-frequency.png
cp "$images/first-3-frequency.png" "$images/window.png"
keys ctrl+shift+Tab ctrl+shift+Tab
shoot first-4-fields.png
keys ctrl+shift+Tab
shoot first-5-registers.png
keys ctrl+shift+Tab
shoot first-1-wiring.png
step "Made:"
printf '   %s\n' "$images"/*.png
