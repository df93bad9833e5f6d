# A short demonstration on a virtual display, driven through the automation interface. Sourced by run.sh.

step "No display here: showing Tarnwick on a virtual one (Xvfb)"
xvfb='' bus=''
trap 'status=$?; kill $bus $xvfb 2>/dev/null || true; [ $status -eq 0 ] || printf "\nFAILED while %s (exit code %s).\n" "$doing" "$status" >&2' EXIT
start_display 1280x800x24

# A bus of its own, which starts the program at the first call.
doing="starting a message bus"
register_service "$run/share/dbus-1/services" "$run"
XDG_CONFIG_HOME=$run/config XDG_DATA_DIRS=$run/share:${XDG_DATA_DIRS:-/usr/local/share:/usr/share} \
    dbus-daemon --session --nofork --nosyslog --print-address=1 >"$run/.bus" 2>"$run/tarnwick.out" &
bus=$!
DBUS_SESSION_BUS_ADDRESS=$(text_of "$run/.bus")
export DBUS_SESSION_BUS_ADDRESS
rm -f "$run/.bus"

part=/com/ostrel/Tarnwick2x/Part
call() {   # OBJECT MEMBER [ARGUMENT...]
    gdbus call --session --dest com.ostrel.Tarnwick2x --object-path "$1" --method "com.ostrel.Tarnwick2x.$2" "${@:3}"
}
shoot() {   # PAGE FILE
    call "$app" _Application.SelectTab "$1" >/dev/null
    sleep 0.3
    import -window root "$run/$2"
}

doing="starting Tarnwick"
coproc holder { exec /usr/bin/python3 examples/hold-application.py; }
exec {holding}>&"${holder[1]}"   # The holder ends when this is closed.
read -r -t 30 app <&"${holder[0]}"

step "Selecting the fractional synthesizer QRV3320 in the menu and loading its registers"
pick_fractional
doing="loading the registers"
call "$app" _Application.LoadPart >/dev/null

step "Stepping its VCO through five frequencies"
doing="stepping the VCO"
for mhz in 1900.5 1901.25 1902 1950.026 2000; do
    call "$app" _Application.SetVCOFrequency "RF PLL" "$mhz" >/dev/null
    printf '   wanted %s MHz, reached %.3f MHz\n' "$mhz" "$(call "$app" _Application.GetVCOFrequency "RF PLL" | tr -d '(),')"
done

step "Playing its registers as a burst, again and again, for a second"
doing="playing a burst"
for name in INT FRAC MODULUS REF FUNC; do
    call $part Part.AddBurstCommand "$name" 0 >/dev/null
    call $part Part.AddBurstCommand 10000000 2 >/dev/null   # Passes of a busy loop.
done
call $part Part.UpdateBurstDisplay >/dev/null
call "$app" _Application.RunBurstMode >/dev/null &
playing=$!
sleep 1
call "$app" _Application.StopBurstMode >/dev/null
wait "$playing"

doing="taking the screenshots"
rm -f "$run"/page-*.png
shoot "Port Setup" page-1-port.png
shoot "Registers" page-2-registers.png
shoot "Bits/Pins" page-3-bits.png
shoot "BurstMode" page-4-burst.png
shoot "RF PLL" page-5-pll.png

doing="closing Tarnwick"
call "$app" Object.Release >/dev/null
exec {holding}>&-
for _ in $(seq 100); do
    gdbus call --session --dest org.freedesktop.DBus --object-path / --method org.freedesktop.DBus.NameHasOwner \
        com.ostrel.Tarnwick2x | grep -q false && break
    sleep 0.1
done

doing="checking what was left"
[ -s "$run/port.log" ] || { echo "Nothing was written to the port." >&2; exit 1; }
step "Done: $(wc -l <"$run/port.log") port writes. Look at"
printf '   %s\n' "$run"/page-*.png "$run/port.log" "$run/port.vcd"
