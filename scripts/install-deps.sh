#!/usr/bin/env bash
# Installs the Debian packages the build, the tests and the benchmarks need,
# for both builds: Qt 5.15 with QtWebKit and Qt 6 (and QtWebEngine 5, which
# the engine-cost benchmark measures beside QtWebKit).
# Idempotent: packages that are already installed are left alone, and the
# package index is refreshed only when something has to be installed.
set -euo pipefail

packages=(
    build-essential cmake make binutils pkg-config
    qtbase5-dev qtbase5-dev-tools
    libqt5webkit5-dev qtwebengine5-dev
    qttools5-dev qttools5-dev-tools
    qt6-base-dev qt6-base-dev-tools libgl-dev
    qt6-tools-dev qt6-tools-dev-tools qt6-l10n-tools
    qt6-webengine-dev qt6-webchannel-dev
    libjsoncpp-dev
    libbenchmark-dev
    clang libclang-rt-14-dev clang-format clang-tidy
    xvfb xauth
    fonts-wqy-microhei
    desktop-file-utils appstream shared-mime-info
    at-spi2-core dbus-bin python3-pyatspi x11-utils
)

missing=()
for p in "${packages[@]}"; do
    status=$(dpkg-query -W -f='${Status}' "$p" 2>/dev/null || true)
    [ "$status" = "install ok installed" ] || missing+=("$p")
done

if [ ${#missing[@]} -eq 0 ]; then
    echo "install-deps: all ${#packages[@]} packages present"
    exit 0
fi

echo "install-deps: installing ${missing[*]}"
sudo=""
if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || { echo "install-deps: need root or sudo to install ${missing[*]}" >&2; exit 1; }
    sudo="sudo"
fi
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update
$sudo apt-get install -y --no-install-recommends "${missing[@]}"
