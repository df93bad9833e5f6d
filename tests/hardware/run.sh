#!/usr/bin/env bash
# Proves the port drivers against hardware that is emulated: QEMU's PC has a parallel port and reports every byte that
# arrives there. The real program runs in that machine, driven over D-Bus. Needs no rights and no parallel port here.
# usage: tests/hardware/run.sh        leaves everything in build/hardware
set -euo pipefail
cd "$(dirname "$0")/../.."
. scripts/common.sh

folder=$PWD/build/hardware

skip() {
    printf 'SKIPPED: the emulated machine: %s\n' "$*"
    exit 0
}

# The kernel package of today, by its name with the version; nothing if there is none to be had.
kernel_package() {
    apt-cache depends linux-image-amd64 2>/dev/null |
        sed -n 's/^ *Depends: \(linux-image-[0-9].*-amd64\)$/\1/p' | head -n 1
}

download_kernel() {
    rm -rf "$folder/package"
    mkdir -p "$folder/package"
    (cd "$folder/package" && apt-get -q -o APT::Sandbox::User="$(id -un)" download "$1") >"$folder/kernel.log" 2>&1
}

# Debian's kernel, unpacked and not installed: the image and the modules that the machine needs, with what these need.
unpack_kernel() {
    local version=$1 module modules package=$folder/package machine=$folder/machine/lib/modules/$1
    doing="unpacking the kernel of the emulated machine"
    dpkg-deb -x "$package"/*.deb "$package"
    cp "$package/boot/vmlinuz-$version" "$folder/vmlinuz"
    busybox depmod -b "$package" "$version"
    modules=$package/lib/modules/$version
    rm -rf "$folder/machine"
    mkdir -p "$machine"
    for module in virtio_pci 9pnet_virtio 9p overlay parport_pc ppdev lp; do
        grep "/$module\.ko:" "$modules/modules.dep"
    done | tr -d : | tr ' ' '\n' | sed '/^$/d' | sort -u >"$folder/modules"
    while read -r module; do
        install -D -m 644 "$modules/$module" "$machine/$module"
        grep "^$module:" "$modules/modules.dep" >>"$machine/modules.dep"
    done <"$folder/modules"
    rm -rf "$package"
    printf '%s\n' "$version" >"$folder/version"
}

make_initrd() {
    mkdir -p "$folder"/machine/{bin,proc,sys,dev,new}
    install -m 755 /bin/busybox "$folder/machine/bin/busybox"
    install -m 755 tests/hardware/init.sh "$folder/machine/init"
    (cd "$folder/machine" && find . | cpio --quiet -o -H newc | gzip -1) >"$folder/initrd.gz"
}

run_machine() {
    timeout "$1" qemu-system-x86_64 -accel tcg -m 1024 -nographic -no-reboot -net none \
        -kernel "$folder/vmlinuz" -initrd "$folder/initrd.gz" \
        -append "console=ttyS0 quiet panic=-1 tarnwick.source=$PWD tarnwick.build=$PWD/build/dev" \
        -virtfs local,path=/,mount_tag=host,security_model=none,readonly=on,multidevs=remap \
        -virtfs local,path="$folder/results",mount_tag=results,security_model=none \
        -parallel null -trace parallel_ioport_write -D "$folder/trace.log" </dev/null >"$folder/console.log" 2>&1
}

[ "$(uname -sm)" = "Linux x86_64" ] || skip "it runs this system's programs, and this is no PC with Linux"
command -v apt-get >/dev/null || command -v qemu-system-x86_64 >/dev/null || skip "there is no qemu-system-x86_64 here"
# shellcheck disable=SC2086
need $build_packages $test_packages
# shellcheck disable=SC2086
need $hardware_packages || skip "the packages $hardware_packages can't be installed"
mkdir -p "$folder"
step "Fetching the kernel of the emulated machine"
kernel=$(kernel_package)
[ -n "$kernel" ] || { as_root apt-get update -qq && kernel=$(kernel_package); }
[ -n "$kernel" ] || skip "the system's package lists name no kernel, linux-image-amd64"
if [ "$(cat "$folder/version" 2>/dev/null)" != "${kernel#linux-image-}" ]; then
    download_kernel "$kernel" ||
        { as_root apt-get update -qq && kernel=$(kernel_package) && download_kernel "$kernel"; } ||
        skip "the package $kernel can't be had, see $folder/kernel.log"
    unpack_kernel "${kernel#linux-image-}"
fi
build dev tarnwick port_state parport_speed

doing="running the emulated machine (see $folder/console.log)"
step "Running Tarnwick in an emulated PC with a parallel port"
make_initrd
rm -rf "$folder/results"
mkdir -p "$folder/results"
begin=$SECONDS
run_machine 1500 || echo "FAILED: the machine didn't come to its end"
cat "$folder/results/report.txt" 2>/dev/null || { tail -n 20 "$folder/console.log"; false; }
status=$(cat "$folder/results/status" 2>/dev/null || echo 1)
[ "$status" = 0 ] || tail -n 20 "$folder/console.log"
doing="comparing what the hardware saw with the port log"
/usr/bin/python3 tests/hardware/compare.py "$folder/trace.log" "$folder/results" parport rawio
[ "$status" = 0 ]
step "The emulated machine: all as it must be, in $((SECONDS - begin)) s"
