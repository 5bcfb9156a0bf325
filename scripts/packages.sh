# SPDX-License-Identifier: GPL-3.0-or-later
# Installs what is missing of the Debian packages that the project needs. Sourced by the commands of the root.
#
#   need_packages NAME...    installs those that are not there, as root or through sudo

build_packages=(
    cmake g++ ninja-build pkg-config
    qtbase5-dev qttools5-dev qttools5-dev-tools libqt5serialport5-dev libqt5charts5-dev libqcustomplot-dev
    qttranslations5-l10n cmark-gfm)
# An in-memory X server, and fonts that have the Latin, Chinese and symbol glyphs of the windows.
screen_packages=(xvfb xauth fonts-dejavu-core fonts-wqy-microhei)
# Gives the tour's dialogs their frames and titles.
window_packages=(openbox)
# Turns the pages of the tour's printout into pictures.
page_packages=(poppler-utils)
bench_packages=(libmodbus-dev libqt5serialbus5-dev libqwt-qt5-dev)
# What makes the Debian package and judges it, and the hand that works the programs in its trial.
package_packages=(appstream desktop-file-utils dpkg-dev file gzip lintian xdotool)
ci_packages=(ccache clang-format clang-tidy mold python3)

need_packages() {
    local missing=() package
    for package in "$@"; do
        [ "$(dpkg-query -W -f='${Status}' "$package" 2>/dev/null)" = "install ok installed" ] ||
            missing+=("$package")
    done
    [ "${#missing[@]}" -gt 0 ] || return 0

    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || {
            echo "These packages are missing, and neither root nor sudo is at hand: ${missing[*]}" >&2
            return 1
        }
        as_root=(sudo)
    fi
    echo "Installing ${missing[*]}"
    # A new machine has no package lists yet.
    "${as_root[@]}" apt-get -qq update || true
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq install -y --no-install-recommends \
        "${missing[@]}" >/dev/null
}

# configure PRESET: once, or again after a change of the machine's packages.
configure() {
    [ -f "build/$1/build.ninja" ] && return 0
    local log result=0
    log=$(mktemp)
    cmake --preset "$1" >"$log" 2>&1 || { result=$?; cat "$log" >&2; }
    rm -f "$log"
    return "$result"
}
