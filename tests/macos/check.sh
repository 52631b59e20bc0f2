#!/usr/bin/env bash
# Checks the macOS back end on a machine that is no Mac. docs/macos.md says what that shows and
# what it cannot show.
#
#   check.sh            every check, and the proof that each of them can fail
#   check.sh --quick    the checks alone
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."

out=$PWD/build/check-macos
downloads=$out/downloads
mkdir -p "$out"
tests/macos/fetch.sh "$downloads"
python3 tests/macos/tools/build_graph.py "$out" "$downloads"

echo "configuration of the preset for macOS, and what is packed:"
python3 tests/macos/tools/configure.py "$out/configure"
python3 tests/macos/tools/check_packaging.py
echo "  as they should be"
readonly checks=(declarations types_on_arm64 types_on_x86_64 analyzer link run_over_fakes)
ninja -C "$out" -k 0 --quiet "${checks[@]/#/check_}" || {
    echo "check-macos: FAILED; each failure above begins with the name of its check" >&2
    exit 1
}
echo "declarations against public data:"
python3 tests/macos/tools/check_declarations.py "$out/declarations/all.json" \
    --headers "$PWD/tests/macos/decl" --npm "$downloads/npm/types" \
    --fpc "$downloads/debian/usr/share/fpcsrc/3.2.2/packages" \
    --allow tests/macos/declaration_allow_list.txt
echo "allowed without confirmation:"
sed -n '/^[^#]/s/^/  /p' tests/macos/declaration_allow_list.txt
echo "type checks: $(find "$out/types_on_arm64" -name '*.o' | wc -l) sources on arm64," \
    "$(find "$out/types_on_x86_64" -name '*.o' | wc -l) on x86_64"
echo "run over fakes under the address and undefined-behaviour sanitizers:"
python3 tests/macos/tools/count_tests.py "$out/run_over_fakes/report.xml"
if [ "${1:-}" != --quick ]; then
    echo "mistakes put in on purpose:"
    python3 tests/macos/tools/seeded_defects.py "$out" "$downloads"
fi
echo "check-macos: type-checked, link-checked and run over fakes on Linux; never run on a Mac"
