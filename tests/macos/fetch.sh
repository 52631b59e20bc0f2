#!/usr/bin/env bash
# Fetches what the checks compare and link against, once: Debian packages that are only unpacked,
# since installing them would remove others, and one npm package of type definitions.
#
#   fetch.sh FOLDER
set -euo pipefail

mkdir -p "$1"
cd "$1"

readonly debian_packages=(libc++-19-dev libc++1-19 libc++abi1-19 musl-dev)
readonly pascal_package=fpc-source-3.2.2
readonly npm_package=@nativescript/macos-node-api@0.4.0

fetch_debian() {
    rm -rf debian.part
    mkdir debian.part
    # apt drops its rights for a download and has to be able to write here.
    (cd debian.part && apt-get -o APT::Sandbox::User=root download -q "${debian_packages[@]}" "$pascal_package")
    mkdir debian.part/root
    for package in "${debian_packages[@]}"; do dpkg -x debian.part/"$package"_*.deb debian.part/root; done
    dpkg --fsys-tarfile debian.part/"$pascal_package"_*.deb |
        tar x -C debian.part/root --wildcards '*/packages/univint/src/*' '*/packages/cocoaint/src/*'
    mv debian.part/root debian
    rm -rf debian.part
}

fetch_npm() {
    rm -rf npm.part
    mkdir npm.part
    (cd npm.part && npm pack --silent "$npm_package" && tar xzf ./*.tgz --wildcards 'package/types/*' package/LICENSE)
    mv npm.part/package npm
    rm -rf npm.part
}

[ -d debian ] || fetch_debian >fetch.log 2>&1 || {
    # The package lists of a fresh machine are absent or stale.
    apt-get update -q >>fetch.log 2>&1 || true
    fetch_debian >>fetch.log 2>&1 || { cat fetch.log >&2; exit 1; }
}
command -v npm >/dev/null || { echo "fetch.sh: npm is missing (apt-get install npm)" >&2; exit 1; }
[ -d npm ] || fetch_npm >fetch.log 2>&1 || { cat fetch.log >&2; exit 1; }

# The library's configuration for other systems, without what it leaves out there.
if [ ! -e libcxx/__config_site ]; then
    mkdir -p libcxx
    sed 's/^#define _LIBCPP_HAS_NO_VENDOR_AVAILABILITY_ANNOTATIONS//' \
        debian/usr/lib/llvm-19/include/c++/v1/__config_site >libcxx/__config_site
fi
