#!/usr/bin/env bash
# run_fuzzers.sh BUILD_DIR SECONDS: runs every fuzz target for SECONDS, as many at once as there are
# processors. A crash leaves its input in BUILD_DIR/artifacts and fails the run.
set -euo pipefail
build=$(realpath "$1")
seconds=$2
mkdir -p "$build/artifacts"

run_one() {
    local target=$1 name seeds grown log
    name=$(basename "$target")
    seeds=$(cat "$target.corpus")
    grown=$build/corpus/$name
    log=$build/$name.log
    mkdir -p "$grown"
    if timeout $((seconds + 60)) "$target" "$grown" ${seeds:+"$seeds"} -max_total_time="$seconds" \
        -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 -verbosity=0 \
        -artifact_prefix="$build/artifacts/$name-" >"$log" 2>&1; then
        echo "$name: clean, $(awk '/stat::number_of_executed_units/ {print $2}' "$log") inputs in $seconds s"
    else
        tail -n 60 "$log"
        echo "$name: FAILED, see $log and $build/artifacts" >&2
        return 1
    fi
}
export -f run_one
export build seconds

targets=$(find "$build/fuzzers" -maxdepth 1 -type f -executable 2>/dev/null | sort)
[ -n "$targets" ] || { echo "no fuzz targets"; exit 0; }
# shellcheck disable=SC2016
printf '%s\n' "$targets" | xargs -d '\n' -n 1 -P "$(nproc)" bash -c 'run_one "$1"' run_one
