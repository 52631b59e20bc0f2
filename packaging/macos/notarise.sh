#!/usr/bin/env bash
# Has a signed bundle notarised and staples the ticket to it. For a Mac.
#
#   notarise.sh BUNDLE PROFILE
#
# PROFILE names credentials that `xcrun notarytool store-credentials` keeps in the key chain.
set -euo pipefail

[ $# -eq 2 ] || { echo "usage: notarise.sh BUNDLE PROFILE" >&2; exit 2; }
bundle=$1 profile=$2
[ -d "$bundle" ] || { echo "notarise.sh: no bundle $bundle" >&2; exit 1; }

archive=$(mktemp -d)/orvelkit.zip
trap 'rm -rf "$(dirname "$archive")"' EXIT
ditto -c -k --keepParent "$bundle" "$archive"
xcrun notarytool submit "$archive" --keychain-profile "$profile" --wait
xcrun stapler staple "$bundle"
spctl --assess --type execute --verbose "$bundle"
