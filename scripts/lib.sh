# Shared by the scripts: sourced, not run. Sets root to the project's folder and makes it the current one.
# shellcheck shell=bash

set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"

# The packages of Debian 12 that the project needs, by what they are for.
build_packages=(g++ lld cmake ninja-build ccache qtbase5-dev libqt5serialport5-dev libqwt-qt5-dev)
test_packages=(umockdev fonts-dejavu-core)
display_packages=(xvfb)
format_packages=(clang-format-14 git)
package_packages=(dpkg-dev file desktop-file-utils)

fail() {
    echo "$*" >&2
    exit 1
}

is_installed() {
    [ "$(dpkg-query --show --showformat='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

# need_packages REASON PACKAGE...: installs those that are missing and says so.
need_packages() {
    local reason=$1 package
    local -a missing=() as_root=()
    shift
    if ! command -v dpkg-query >/dev/null; then
        echo "No Debian packages here; needed $reason: $*"
        return
    fi
    for package in "$@"; do
        is_installed "$package" || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || fail "Needed $reason and not installed: ${missing[*]}. Run: apt-get install ${missing[*]}"
        as_root=(sudo)
    fi
    echo "Installing with apt-get${as_root:+ (through sudo)}, needed $reason: ${missing[*]}"
    "${as_root[@]}" apt-get -q update
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -y --no-install-recommends install "${missing[@]}"
}

# configure_and_build PRESET [TARGET...]
configure_and_build() {
    local preset=$1
    shift
    cmake --preset "$preset"
    cmake --build --preset "$preset" ${1:+--target "$@"}
}

# The processes that a script has started in the background. They end the last one first: the program needs the display,
# and both the drives.
children=()

end_children() {
    local i
    for ((i = ${#children[@]} - 1; i >= 0; i--)); do
        kill "${children[i]}" 2>/dev/null || true
        wait "${children[i]}" 2>/dev/null || true
    done
}

# wait_for SECONDS COMMAND...: until the command succeeds.
wait_for() {
    local tries=$(($1 * 10))
    shift
    until "$@"; do
        ((tries-- > 0)) || return 1
        sleep 0.1
    done
}
