#!/usr/bin/env bash
# Checks the formatting of the sources, or with --fix repairs it.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."

sources=$(git ls-files --cached --others --exclude-standard '*.cpp' '*.hpp' '*.mm' | sort -u |
    while IFS= read -r path; do [ ! -e "$path" ] || printf '%s\n' "$path"; done)
[ -n "$sources" ] || exit 0
# Debian's unversioned clang-format is 14; other versions format differently.
jobs=$(nproc)
format() { printf '%s\n' "$sources" | xargs -d '\n' -n 16 -P "$jobs" clang-format "$@"; }

if [ "${1:-}" = --fix ]; then
    format -i
elif ! format --dry-run -Werror >/dev/null 2>&1; then
    jobs=1  # Messages of parallel runs would mix.
    echo "not formatted (make fmt repairs it):"
    format --dry-run --ferror-limit=1 2>&1 | sed -n 's/^\([^:]*\):[0-9].*clang-format-violations.*/  \1/p' | sort -u
    exit 1
fi
