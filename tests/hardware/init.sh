#!/bin/busybox sh
# shellcheck shell=dash
# The first process of the emulated machine. Makes a system out of the host's file system, which it can't change, with a
# layer in memory above it, and runs guest.py in that.
/bin/busybox --install -s /bin
export PATH=/bin
mount -t proc proc /proc
mount -t sysfs sys /sys
mount -t devtmpfs dev /dev
for module in virtio_pci 9pnet_virtio 9p overlay; do
    modprobe $module || echo "no module $module"
done
options=trans=virtio,version=9p2000.L,msize=512000
mkdir /lower /rw
mount -t 9p -o $options,ro,cache=loose host /lower
mount -t tmpfs rw /rw
mkdir /rw/upper /rw/work
mount -t overlay -o lowerdir=/lower,upperdir=/rw/upper,workdir=/rw/work overlay /new
mkdir -p /new/lib/modules /new/results
cp -r /lib/modules/* /new/lib/modules/
mount -t tmpfs tmp /new/tmp
mount -t 9p -o $options results /new/results
for folder in proc sys dev; do
    mount --move /$folder /new/$folder
done
mkdir -p /new/tmp/runtime
chmod 700 /new/tmp/runtime
# The source folder and the folder of the built programs are told on the kernel's command line.
source=$(sed -n 's/.*tarnwick.source=\([^ ]*\).*/\1/p' /new/proc/cmdline)
build=$(sed -n 's/.*tarnwick.build=\([^ ]*\).*/\1/p' /new/proc/cmdline)
export source build
# A tree under /tmp is hidden by the machine's own: it is laid back into its place.
if [ ! -e "/new$source/tests" ]; then
    mkdir -p "/new$source"
    mount --bind "/lower$source" "/new$source"
fi
export PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8
export XDG_RUNTIME_DIR=/tmp/runtime QT_QPA_PLATFORM=offscreen
chroot /new /usr/bin/dbus-run-session -- /usr/bin/python3 -B "$source/tests/hardware/guest.py" </new/dev/null
echo "$?" >/new/results/status
sync
poweroff -f
