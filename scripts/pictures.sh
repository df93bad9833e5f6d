#!/usr/bin/env bash
# Makes the pictures of the documents anew, from the real program on a virtual display. With the folder of another
# build than build/release as argument, from that one.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/common.sh

# shellcheck disable=SC2086
need $screen_packages
program=$PWD/${1:-build/release}/tarnwick
images=$PWD/docs/images
folder=$(mktemp -d)
xvfb='' bus=''
trap 'status=$?; kill $bus $xvfb 2>/dev/null || true; rm -rf "$folder"; [ $status -eq 0 ] || printf "\nFAILED while %s (exit code %s).\n" "$doing" "$status" >&2' EXIT
mkdir -p "$images"

doing="starting the virtual display"
size=1200x740   # The window's at the first start, which the screen has room for.
Xvfb -displayfd 9 -screen 0 1216x788x24 -nolisten tcp >/dev/null 2>&1 9>"$folder/.display" &
xvfb=$!
doing="starting a message bus that starts the program at the first call"
install -m 755 "$program" "$folder/tarnwick"
cp parts/*.ini "$folder"
register_service "$folder/share/dbus-1/services" "$folder"
for _ in $(seq 100); do
    [ -s "$folder/.display" ] && break
    sleep 0.1
done
DISPLAY=:$(cat "$folder/.display")
export DISPLAY
XDG_DATA_DIRS=$folder/share:${XDG_DATA_DIRS:-/usr/local/share:/usr/share} \
    dbus-daemon --session --nofork --nosyslog --print-address=1 >"$folder/.bus" 2>/dev/null &
bus=$!
for _ in $(seq 100); do
    [ -s "$folder/.bus" ] && break
    sleep 0.1
done
DBUS_SESSION_BUS_ADDRESS=$(cat "$folder/.bus")
export DBUS_SESSION_BUS_ADDRESS

doing="starting Tarnwick"
coproc holder { exec /usr/bin/python3 examples/hold-application.py; }
exec {holding}>&"${holder[1]}"   # The holder ends when this is closed.
read -r -t 30 app <&"${holder[0]}"

call() {   # MEMBER [ARGUMENT...]
    gdbus call --session --dest com.ostrel.Tarnwick2x --object-path "$app" \
        --method "com.ostrel.Tarnwick2x._Application.$1" -- "${@:2}" >/dev/null
}
shoot() {   # PAGE FILE
    call SelectTab "$1"
    sleep 0.5
    import -window root -crop "$size+0+0" +repage +dither -colors 64 -strip "$images/$2"
}

doing="taking the pictures"
call SelectPart QRV3320
shoot "Port Setup" first-1-wiring.png
shoot "RF PLL" first-2-reference.png
call SetVCOFrequency "RF PLL" 1925.03
shoot "RF PLL" first-3-frequency.png
shoot "Registers" first-4-registers.png
shoot "Bits/Pins" first-5-fields.png
cp "$images/first-3-frequency.png" "$images/window.png"
call SetSaveSettings false

doing="closing Tarnwick"
exec {holding}>&-
step "Made:"
printf '   %s\n' "$images"/*.png
