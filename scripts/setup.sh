#!/usr/bin/env bash
# Installs what a fresh Debian 12 machine lacks to build, test and run KAVRO Viewer.
# Safe to run again: it only installs packages that are missing.
set -euo pipefail

packages=(
    build-essential cmake ninja-build ccache pkg-config
    qt6-base-dev qt6-base-dev-tools
    ffmpeg dosfstools mtools fonts-dejavu-core
    libvlc-dev vlc-plugin-base vlc-bin
    qt6-svg-dev qt6-tools-dev qt6-tools-dev-tools qt6-l10n-tools qt6-webengine-dev
    xvfb xauth imagemagick fusefat dbus-daemon xdotool
    hyperfine valgrind libxml2-utils python3 time desktop-file-utils appstream help2man
    fonts-nanum lintian
    clang libclang-rt-14-dev
    xdg-utils cups printer-driver-cups-pdf poppler-utils
)

missing=()
for package in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "ok installed"; then
        missing+=("$package")
    fi
done

if ((${#missing[@]})); then
    sudo=""
    if [ "$(id -u)" -ne 0 ]; then
        sudo="sudo"
    fi
    echo "Installing: ${missing[*]}"
    $sudo apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
