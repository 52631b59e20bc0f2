#!/usr/bin/env bash
# Makes orvelkit.app, which people see as Orvel, from a finished build. For a Mac.
#
#   make_app_bundle.sh BUILD FOLDER [IDENTITY]
#
# BUILD is the folder of the preset "macos", FOLDER takes the bundle. IDENTITY signs it; without one
# it is signed for this machine alone, and macOS forgets its permissions with every new build.
set -euo pipefail

usage() {
    echo "usage: make_app_bundle.sh BUILD FOLDER [IDENTITY]" >&2
    exit 2
}
if [ $# -lt 2 ] || [ $# -gt 3 ]; then usage; fi
build=$1 folder=$2 identity=${3:--}
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
program=$build/orvelkit
[ -x "$program" ] || { echo "make_app_bundle.sh: no program $program: build the preset 'macos' first" >&2; exit 1; }
version=$(sed -n 's/^ *VERSION \([0-9.]*\)$/\1/p' "$here/../../CMakeLists.txt" | head -n 1)

bundle=$folder/orvelkit.app
rm -rf "$bundle"
mkdir -p "$bundle/Contents/MacOS" "$bundle/Contents/Resources/zh-Hans.lproj"
sed "s/@VERSION@/$version/" "$here/Info.plist" >"$bundle/Contents/Info.plist"
cp "$program" "$bundle/Contents/MacOS/orvelkit"
for resource in orvelkit.icns MenuBarIcon.pdf; do
    [ ! -e "$here/$resource" ] || cp "$here/$resource" "$bundle/Contents/Resources/"
done
printf 'CFBundleDisplayName = "Orvel";\n' >"$bundle/Contents/Resources/zh-Hans.lproj/InfoPlist.strings"

signature=(--force --sign "$identity" --entitlements "$here/orvel.entitlements")
# Only a real identity can carry what notarisation asks for.
[ "$identity" = - ] || signature+=(--options runtime --timestamp)
codesign "${signature[@]}" "$bundle"
codesign --verify --strict "$bundle"
echo "$bundle"
