#!/usr/bin/env bash
# Prints the registers of the device that Tarnwick has selected: position, name, decimal, hexadecimal and binary value.
# usage: register-dump.sh
set -euo pipefail
service=com.ostrel.Tarnwick2x
part=/com/ostrel/Tarnwick2x/Part

text() { cut -d '"' -f 2; }   # What busctl prints of a string, without its type and quotes.

# A call would start the program, with nothing in it to print.
if ! busctl --user --no-pager list --acquired 2>/dev/null | grep -q "^$service "; then
    echo "Tarnwick isn't running." >&2
    exit 1
fi
echo "device $(busctl --user get-property "$service" "$part" "$service.Part" ID | text)"
positions=$(busctl --user tree --list --no-pager "$service" | sed -n "s#^$part/Registers/##p" | sort -n)
for position in $positions; do
    register=$part/Registers/$position
    name=$(busctl --user get-property "$service" "$register" "$service.Register" ID | text)
    bits=$(busctl --user call "$service" "$register" "$service.Register" RegisterString | text)
    printf '%2d  %-12s %12d  %8X  %s\n' "$position" "$name" "$((2#$bits))" "$((2#$bits))" "$bits"
done
