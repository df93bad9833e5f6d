# usage: life.sh PACKAGE_FOLDER
# The package's life in a clean root with a user's folder of its own: installed, started, updated, removed.
set -euo pipefail

# Runs itself once more on a bus of its own, which looks for services in the new root first.
if [ -z "${LIFE_PLACE:-}" ]; then
    LIFE_PLACE=$(mktemp -d)
    trap 'rm -rf "$LIFE_PLACE"' EXIT
    mkdir -m 700 "$LIFE_PLACE/run"
    export QT_QPA_PLATFORM=offscreen LIFE_PLACE XDG_RUNTIME_DIR=$LIFE_PLACE/run XDG_DATA_HOME=$LIFE_PLACE/home
    export XDG_DATA_DIRS=$LIFE_PLACE/root/usr/share
    dbus-run-session -- bash "$0" "$@"
    exit
fi

package=$1/tarnwick.deb
root=$LIFE_PLACE/root
own=$XDG_DATA_HOME/tarnwick
step() { echo "== $*"; }
fail() { echo "FAILED: $*" >&2; exit 1; }

package_manager() {
    dpkg --root="$root" --log=/dev/null --force-not-root --force-depends --force-bad-path --no-triggers "$@" \
        >"$LIFE_PLACE/log" 2>&1 || { cat "$LIFE_PLACE/log" >&2; fail "dpkg $*"; }
}

on_bus() {
    gdbus call --session --dest org.freedesktop.DBus --object-path /org/freedesktop/DBus \
        --method org.freedesktop.DBus.NameHasOwner com.ostrel.Tarnwick2x
}

wait_for() {   # ANSWER OF on_bus
    for _ in $(seq 3000); do
        [ "$(on_bus)" != "$1" ] || return 0
        sleep 0.1
    done
    fail "the name on the bus is still not $1"
}

# Starts the program as a user does and ends it when it is ready.
start_once() {
    "$root/usr/bin/tarnwick" &
    wait_for '(true,)'
    kill $!
    wait $! || true
    wait_for '(false,)'
}

same() { diff -r --exclude=.shipped "$1" "$2" || fail "$3"; }

step "installing"
mkdir -p "$root"/var/lib/dpkg/{info,updates,triggers}
touch "$root/var/lib/dpkg/status"
package_manager --install "$package"
[ "$("$root/usr/bin/tarnwick-part" --version | grep -c '[0-9]\.[0-9]')" = 1 ] || fail "tarnwick-part doesn't start"
# The services of the root are started from the root.
service=$root/usr/share/dbus-1/services/com.ostrel.Tarnwick2x.service
grep -qx 'Exec="/usr/bin/tarnwick"' "$service" || fail "the service starts something else"
sed -i "s|/usr/bin|$root/usr/bin|" "$service"
gdbus call --session --dest org.freedesktop.DBus --object-path /org/freedesktop/DBus \
    --method org.freedesktop.DBus.ReloadConfig >/dev/null

step "activation by the bus; the first start fills the user's folder"
[ ! -e "$own" ] || fail "the user's folder was there before"
gdbus call --timeout 300 --session --dest com.ostrel.Tarnwick2x --object-path /com/ostrel/Tarnwick2x \
    --method com.ostrel.Tarnwick2x.Factory.CreateApplication | grep /com/ostrel/Tarnwick2x/ || fail "no application"
wait_for '(false,)'   # It ends with its only client.
same "$root/usr/share/tarnwick" "$own" "the user's folder isn't what was shipped"

step "a second start changes nothing"
echo "; mine" >>"$own/QRV1150.ini"
rm "$own/QRV9000.ini"
cp -r "$own" "$LIFE_PLACE/kept"
start_once
same "$LIFE_PLACE/kept" "$own" "the second start changed the user's files"

step "an update brings new versions, but not over the user's changes"
dpkg-deb --raw-extract "$package" "$LIFE_PLACE/next"
sed -i 's/^Version: .*/&+next/' "$LIFE_PLACE/next/DEBIAN/control"
for name in QRV1150 QRV2270 QRV9000; do
    echo "; next" >>"$LIFE_PLACE/next/usr/share/tarnwick/$name.ini"
done
dpkg-deb --root-owner-group -Znone --build "$LIFE_PLACE/next" "$LIFE_PLACE/next.deb" >/dev/null
package_manager --install "$LIFE_PLACE/next.deb"
start_once
shipped=$root/usr/share/tarnwick
cp "$shipped/QRV1150.ini" "$LIFE_PLACE/kept/QRV1150.ini.new"
cp "$shipped/QRV2270.ini" "$LIFE_PLACE/kept/QRV2270.ini"
same "$LIFE_PLACE/kept" "$own" "the user's files after the update"

step "removal leaves the user's files, and nothing else"
package_manager --remove tarnwick
left=$(find "$root/usr" ! -type d 2>/dev/null || true)
[ -z "$left" ] || fail "left behind: $left"
same "$LIFE_PLACE/kept" "$own" "the user's files after the removal"
