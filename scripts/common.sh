# What run.sh and test.sh share. Sourced by them, with the current folder at the top of the tree.

step() { printf '== %s\n' "$*"; }

# Ends with a message when a command fails: name the step in $doing before each.
doing="starting"
trap 'status=$?; if [ $status -ne 0 ]; then printf "\nFAILED while %s (exit code %s).\n" "$doing" "$status" >&2; fi' EXIT

build_packages="g++ cmake ninja-build ccache pkg-config qt6-base-dev qt6-svg-dev libgl-dev libxcb1-dev fonts-dejavu-core"
test_packages="libgtest-dev nlohmann-json3-dev sigrok-cli dbus libglib2.0-bin python3-dbus systemd"
test_packages="$test_packages desktop-file-utils appstream lintian man-db libxml2-utils"
screen_packages="xvfb imagemagick xdotool dbus libglib2.0-bin python3-dbus"
hardware_packages="qemu-system-x86 busybox-static cpio"

as_root() {
    if [ "$(id -u)" = 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        echo "Packages must be installed as root: run this script as root or install sudo." >&2
        return 1
    fi
}

# Installs those of the given Debian packages that are missing; says nothing when all are there.
need() {
    local missing="" package
    for package in "$@"; do
        dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null | grep -qx installed || missing="$missing $package"
    done
    [ -z "$missing" ] && return 0
    doing="installing the Debian packages:$missing"
    step "$doing"
    if ! command -v apt-get >/dev/null; then
        echo "This isn't a Debian system (no apt-get). Install by hand what these stand for:$missing" >&2
        return 1
    fi
    as_root apt-get update -qq
    # shellcheck disable=SC2086
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $missing >/dev/null
}

# Configures a preset and builds targets of it; the output shows only when it fails.
build() {
    local preset=$1 log
    shift
    mkdir -p build
    log=build/$preset.log
    doing="configuring the $preset build (see $log)"
    if ! cmake --preset "$preset" >"$log" 2>&1; then
        tail -n 30 "$log" >&2
        return 1
    fi
    doing="building the $preset build (see $log)"
    step "Building ($preset)"
    if ! cmake --build "build/$preset" ${1:+--target "$@"} >>"$log" 2>&1; then
        grep -E -A5 'error:|FAILED:' "$log" | head -n 60 >&2
        return 1
    fi
}

# Lets a bus that looks for services in that folder start the program of the other one.
register_service() {   # SERVICES PROGRAMS
    mkdir -p "$1"
    sed "s|@CMAKE_INSTALL_FULL_BINDIR@|$2|" packaging/com.ostrel.Tarnwick2x.service.in >"$1/com.ostrel.Tarnwick2x.service"
}

# Prints what another program writes to a file, as soon as it stands there.
text_of() {   # FILE
    for _ in $(seq 1000); do
        [ -s "$1" ] && break
        sleep 0.1
    done
    [ -s "$1" ] && cat "$1"
}

# Starts a virtual display of a size and leaves its process in $xvfb, for the caller to end.
start_display() {
    local number
    doing="starting the virtual display"
    number=$(mktemp)
    Xvfb -displayfd 9 -screen 0 "$1" -nolisten tcp >/dev/null 2>&1 9>"$number" &
    xvfb=$!
    DISPLAY=:$(text_of "$number")
    export DISPLAY
    rm -f "$number"
}

# Selects the fractional synthesizer QRV3320 in the menu, by keys, as a user does.
pick_fractional() {
    local window
    doing="selecting QRV3320 in the menu"
    window=$(timeout 120 xdotool search --sync --onlyvisible --name '^QRV$')
    xdotool windowfocus --sync "$window"
    xdotool key --delay 60 alt+s Down Down Down Right Return
    timeout 120 xdotool search --sync --onlyvisible --name '^QRV3320$' >/dev/null
}
