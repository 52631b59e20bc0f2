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
fail() {
    echo "make_app_bundle.sh: $1" >&2
    exit 1
}
if [ $# -lt 2 ] || [ $# -gt 3 ]; then usage; fi
build=$1 folder=$2 identity=${3:--}
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
sources=$here/../..
program=$build/orvelkit
[ -x "$program" ] || fail "no program $program: build the preset 'macos' first"
command -v macdeployqt >/dev/null || fail "macdeployqt is not in the PATH: it comes with Qt (brew install qt)"
version=$(sed -n 's/^ *VERSION \([0-9.]*\)$/\1/p' "$sources/CMakeLists.txt" | head -n 1)

bundle=$folder/orvelkit.app
rm -rf "$bundle"
mkdir -p "$bundle/Contents/MacOS" "$bundle/Contents/Resources/zh-Hans.lproj"
sed "s/@VERSION@/$version/" "$here/Info.plist" >"$bundle/Contents/Info.plist"
cp "$program" "$bundle/Contents/MacOS/orvelkit"
for resource in orvelkit.icns MenuBarIcon.pdf; do
    [ ! -e "$here/$resource" ] || cp "$here/$resource" "$bundle/Contents/Resources/"
done
printf 'CFBundleDisplayName = "Orvel";\n' >"$bundle/Contents/Resources/zh-Hans.lproj/InfoPlist.strings"

# Qt's libraries, and the modules that the views import.
views=()
for view in "$sources"/*/view "$sources/platform/qt/controls"; do views+=("-qmldir=$view"); done
macdeployqt "$bundle" "${views[@]}" -always-overwrite

# Only a real identity can carry what notarisation asks for.
signature=(--force --sign "$identity")
[ "$identity" = - ] || signature+=(--options runtime --timestamp)
# From the inside out: a signature covers those within.
find "$bundle/Contents" -name '*.dylib' -type f -exec codesign "${signature[@]}" {} +
find "$bundle/Contents" -name '*.framework' -type d -prune -exec codesign "${signature[@]}" {} +
codesign "${signature[@]}" --entitlements "$here/orvel.entitlements" "$bundle"
codesign --verify --strict "$bundle"
echo "$bundle"
