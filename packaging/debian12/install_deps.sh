#!/usr/bin/env bash
# Installs what a fresh Debian 12 lacks to build, test and run Orvel.
#
#   install_deps.sh            everything
#   install_deps.sh build      only what building and running need
#
# Asks dpkg first: when nothing is missing, no package manager starts and no root is needed.
set -euo pipefail

build_packages=(
    # Compilers and build tools
    ccache
    clang-19
    cmake
    g++
    libclang-rt-19-dev
    lld-19
    llvm-19
    make
    ninja-build
    pkg-config
    python3

    # Libraries
    libcli11-dev
    libgdk-pixbuf-2.0-dev
    libglib2.0-dev
    libplist-dev
    libpng-dev
    rapidjson-dev

    # X11
    libx11-dev
    libx11-xcb-dev
    libxcb-composite0-dev
    libxcb-ewmh-dev
    libxcb-icccm4-dev
    libxcb-randr0-dev
    libxcb-res0-dev
    libxcb-shape0-dev
    libxcb-shm0-dev
    libxcb-xfixes0-dev
    libxcb-xinput-dev
    libxcb-xkb-dev
    libxcb1-dev
    libxcomposite-dev
    libxdamage-dev
    libxext-dev
    libxfixes-dev
    libxi-dev
    libxkbcommon-dev
    libxkbcommon-x11-dev
    libxrandr-dev
    libxss-dev
    libxtst-dev

    # Qt and QML
    libegl-dev
    libgl-dev
    libqt6svg6
    libvulkan-dev
    qml6-module-qtqml
    qml6-module-qtqml-models
    qml6-module-qtqml-workerscript
    qml6-module-qtquick
    qml6-module-qtquick-controls
    qml6-module-qtquick-layouts
    qml6-module-qtquick-shapes
    qml6-module-qtquick-templates
    qml6-module-qtquick-window
    qt6-base-dev
    qt6-declarative-dev
    qt6-declarative-dev-tools
    qt6-qpa-plugins
    qt6-svg-dev

    # A desktop to run in where there is none
    l3afpad
    openbox
    x11-xkb-utils
    x11-xserver-utils
    xserver-xorg-core
    xserver-xorg-dev
    xserver-xorg-video-dummy
    xterm
)

test_packages=(
    # Test and check tools
    clang-format
    clang-tidy-19
    desktop-file-utils
    gobjc++
    libbenchmark-dev
    libblocksruntime-dev
    libgmock-dev
    libgnustep-base-dev
    libgtest-dev
    libplist-utils
    librsvg2-bin
    man-db
    qml6-module-qttest
    qt6-qmllint-plugins
    shellcheck

    # A desktop to test in
    at-spi2-core
    dbus
    dbus-x11
    fcitx5
    fcitx5-chewing
    featherpad
    gir1.2-gtk-3.0
    ibus
    ibus-chewing
    imagemagick
    libatk-adaptor
    libatspi2.0-dev
    libglib2.0-bin
    mousepad
    pcmanfm
    picom
    python3-dbusmock
    python3-gi
    thunar
    trayer
    wmctrl
    x11-apps
    x11-utils
    xauth
    xclip
    xdotool
    xfce4-clipman
    xfce4-panel
    xfce4-terminal
    xfconf
    xfwm4
    xinput
    xsel
    xvfb
    zenity

    # Fonts and icons
    adwaita-icon-theme
    fonts-noto-cjk
    fonts-noto-core
    libgl1-mesa-dri
)

# Node.js from elsewhere brings npm along and refuses Debian's.
command -v npm >/dev/null || test_packages+=(npm)

case "${1:-all}" in
    all) packages=("${build_packages[@]}" "${test_packages[@]}") ;;
    build) packages=("${build_packages[@]}") ;;
    *)
        echo "install_deps.sh: unknown argument '$1' (all, build)" >&2
        exit 2
        ;;
esac

if ! command -v dpkg-query >/dev/null; then
    echo "install_deps.sh: this is not a Debian system; install by hand what ${BASH_SOURCE[0]} lists" >&2
    exit 1
fi

# An unknown package is as missing as one that was removed; dpkg-query says so on standard error.
installed=$(dpkg-query --show --showformat '${db:Status-Status} ${Package}\n' "${packages[@]}" \
    2>/dev/null | awk '$1 == "installed" { print $2 }' || true)
mapfile -t missing < <(comm -23 <(printf '%s\n' "${packages[@]}" | sort -u) <(sort -u <<<"$installed"))
[ ${#missing[@]} -gt 0 ] || exit 0

echo "Installing: ${missing[*]}"
as_root=()
if [ "$(id -u)" != 0 ]; then
    if ! command -v sudo >/dev/null; then
        echo "install_deps.sh: not root and no sudo here; as root run: apt-get install ${missing[*]}" >&2
        exit 1
    fi
    as_root=(sudo)
fi
install=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive
    apt-get install --yes --no-install-recommends -o DPkg::Lock::Timeout=300 "${missing[@]}")
# The package lists of a fresh machine are often absent or stale: refresh them when a first try fails.
"${install[@]}" || {
    "${as_root[@]}" apt-get update -o DPkg::Lock::Timeout=300
    "${install[@]}"
}
