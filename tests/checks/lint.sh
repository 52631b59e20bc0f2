#!/usr/bin/env bash
# Every check of the sources. All of them run; the exit status is 1 when one has findings.
set -uo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.." || exit

failed=()
step() {
    local name=$1 start=$SECONDS
    shift
    if "$@"; then
        echo "ok      $name ($((SECONDS - start)) s)"
    else
        echo "FAILED  $name" >&2
        failed+=("$name")
    fi
}

configure() {
    mkdir -p build
    cmake --preset tidy >build/tidy.configure.log 2>&1 || {
        cat build/tidy.configure.log
        return 1
    }
}

scripts() {
    git ls-files --cached --others --exclude-standard '*.sh' .ci/run | sort -u |
        xargs -d '\n' shellcheck --external-sources
}

qml() {
    [ -n "$(git ls-files --cached --others --exclude-standard '*.qml')" ] || return 0
    cmake --build --preset tidy --target all_qmllint -- --quiet
}

step "formatting" tests/checks/format.sh
step "layering" python3 tests/checks/layering.py
step "twins" python3 tests/checks/mirror.py
step "banned calls" python3 tests/checks/banned_calls.py
step "file lengths" python3 tests/checks/file_length.py
step "shell scripts" scripts
step "desktop entry" desktop-file-validate packaging/linux/orvel.desktop
step "configuration" configure
step "headers alone" cmake --build --preset tidy --target header_check -- --quiet
step "QML" qml
step "clang-tidy" python3 tests/checks/tidy.py build/tidy

if [ ${#failed[@]} -gt 0 ]; then
    echo "lint: ${#failed[@]} failed: ${failed[*]}" >&2
    exit 1
fi
echo "lint: clean"
