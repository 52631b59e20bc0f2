#!/usr/bin/env bash
# Runs the tests over the fakes with a home of their own.
#
#   run_over_fakes.sh PROGRAM REPORT.xml
set -euo pipefail

home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
# The runtime of the fakes does not count references to Objective-C objects; the tests count
# those of Core Foundation themselves.
HOME=$home GNUSTEP_USER_ROOT=$home ASAN_OPTIONS=detect_leaks=0:detect_stack_use_after_return=1 \
    UBSAN_OPTIONS=print_stacktrace=1 ASAN_SYMBOLIZER_PATH=/usr/bin/llvm-symbolizer-19 \
    timeout 120 "$(realpath "$1")" --gtest_brief=1 --gtest_output="xml:$2.part" >"$2.log" 2>&1 || {
    cat "$2.log" >&2
    exit 1
}
mv "$2.part" "$2"
