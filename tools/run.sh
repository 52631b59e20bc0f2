#!/usr/bin/env bash
# run.sh BUILD_DIR: starts Orvel in this session; without one, in an embedded desktop that a short
# scene plays in, and that leaves a screenshot.
set -euo pipefail
build=$1
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    exec "$build/orvel" run
fi
demo=$build/demo-desktop
[ -x "$demo" ] || { echo "no display, and no $demo to make one" >&2; exit 1; }
exec "$demo" --program "$build/orvel" --screenshot "$build/demo.png"
