#!/usr/bin/env bash
# uninstall.sh MANIFEST: removes the installed files that CMake's manifest names, and the folders
# of our own that this leaves empty. DESTDIR must be what it was at installation.
set -euo pipefail
manifest=$1
[ -r "$manifest" ] || { echo "no $manifest: nothing was installed from this folder" >&2; exit 1; }

while IFS= read -r path || [ -n "$path" ]; do
    target=${DESTDIR:-}$path
    if [ -e "$target" ] || [ -L "$target" ]; then
        rm -- "$target"
        echo "removed $target"
    fi
    case $(dirname "$path") in
        */orvel) rmdir --ignore-fail-on-non-empty -- "$(dirname "$target")" 2>/dev/null || true ;;
    esac
done <"$manifest"
rm -- "$manifest"
