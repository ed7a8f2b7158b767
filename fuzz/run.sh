#!/usr/bin/env bash
# Runs every fuzz target of a build for a bounded time, each on a fresh copy
# of its seed corpus (the repository's corpus is never written), with its
# dictionary (<name>.dict) when it has one, and the suppressions of Qt's own
# leaks (qt.lsan.supp). A crash, a leak, a timeout or a broken promise
# fails the run; the input that caused it is kept and named.
#
# With FUZZ_RUNS set, each target instead tries that many inputs from a fixed
# seed (and Qt's hashing unseeded), so two runs try the same inputs: CI's
# pass is repeatable, and a red one reproduces on any machine.
#
#   fuzz/run.sh <build dir> [seconds per target] [target names...]
set -uo pipefail

here=$(cd "$(dirname "$0")" && pwd)
build=${1:?usage: fuzz/run.sh <build dir> [seconds] [targets...]}
seconds=${2:-60}
shift $(($# < 2 ? $# : 2))
build=$(cd "$build" && pwd)

targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
    for bin in "$build"/bin/fuzz_*; do
        [ -x "$bin" ] && targets+=("${bin##*/fuzz_}")
    done
fi
[ ${#targets[@]} -gt 0 ] || { echo "fuzz: no fuzz targets in $build/bin" >&2; exit 1; }

budget=${FUZZ_RUNS:+$FUZZ_RUNS inputs from seed 1}
budget=${budget:-${seconds}s}
failed=()
for name in "${targets[@]}"; do
    bin=$build/bin/fuzz_$name
    run=$build/fuzz-runs/$name
    rm -rf "$run"
    mkdir -p "$run/corpus" "$run/artifacts"
    [ -d "$here/corpus/$name" ] && cp -R "$here/corpus/$name/." "$run/corpus/"
    args=(-timeout=25 -print_final_stats=1 -artifact_prefix="$run/artifacts/")
    if [ -n "${FUZZ_RUNS:-}" ]; then
        args+=(-runs="$FUZZ_RUNS" -seed=1)
        export QT_HASH_SEED=0
    else
        args+=(-max_total_time="$seconds")
    fi
    [ -f "$here/$name.dict" ] && args+=(-dict="$here/$name.dict")
    lsan="suppressions=$here/qt.lsan.supp:print_suppressions=0${LSAN_OPTIONS:+:$LSAN_OPTIONS}"
    echo "== fuzz_$name for $budget (log: $run/log)"
    if LSAN_OPTIONS=$lsan "$bin" "${args[@]}" "$run/corpus" >"$run/log" 2>&1; then
        grep -E '^stat::number_of_executed_units' "$run/log" | sed 's/^stat::/   /'
    else
        failed+=("$name")
        grep -E -A3 '^==[0-9]+==ERROR|^broken:|runtime error|Test unit written' "$run/log" | head -n 20
        for input in "$run"/artifacts/*; do
            [ -e "$input" ] && echo "   reproduce: $bin $input"
        done
    fi
done

if [ ${#failed[@]} -gt 0 ]; then
    echo "fuzz: failed: ${failed[*]}" >&2
    exit 1
fi
echo "fuzz: ${#targets[@]} targets ran $budget each without a finding"
