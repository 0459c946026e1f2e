#!/usr/bin/env bash
# Builds the libFuzzer targets (the fuzz preset: clang, coverage, AddressSanitizer +
# UndefinedBehaviorSanitizer; only the fuzzers and the libraries they link) and runs each one
# for SECONDS_PER_TARGET seconds (default 60) from its seed corpus. Fails when a target finds
# a crash, a sanitizer report, a leak, an input slower than the timeout or one that needs more
# memory than the limit; the input is kept in build/fuzz/artifacts/ and the command that
# replays it is printed. The corpus each target grows is kept in build/fuzz/corpus/, so later
# runs go on from there.
#
# Usage: scripts/fuzz.sh [SECONDS_PER_TARGET]
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
seconds=${1:-60}
if [[ ! "$seconds" =~ ^[1-9][0-9]*$ ]]; then
    echo "usage: scripts/fuzz.sh [SECONDS_PER_TARGET]" >&2
    exit 2
fi

"$root/scripts/setup.sh" fuzz

build="$root/build/fuzz"
seeds="$root/fuzz/corpus"
dictionaries="$root/fuzz/dictionaries"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1${UBSAN_OPTIONS:+:$UBSAN_OPTIONS}"

# The bundled OBJ files seed the OBJ reader, besides its own seeds.
mkdir -p "$build/seeds/obj_reader"
cp "$root"/data/*.obj "$build/seeds/obj_reader/"

# target name, seed folders, dictionary ("-" for none), options of its own. The structured
# target reads its input as a stream of choices, so it starts at full length at once.
targets=(
    "fuzz_obj_reader|$build/seeds/obj_reader $seeds/obj_reader|obj.dict|-max_len=8192"
    "fuzz_script|$seeds/script|script.dict|-max_len=8192"
    "fuzz_channel_parser|$seeds/channel_parser|channel_parser.dict|-max_len=4096"
    "fuzz_port_options|$seeds/port_options|port_options.dict|-max_len=4096"
    "fuzz_graph_objects|$seeds/graph_objects|-|-max_len=4096 -len_control=0"
)

failed=()
summary=()
for entry in "${targets[@]}"; do
    IFS='|' read -r name seedDirs dictionary own <<<"$entry"
    corpus="$build/corpus/$name"
    artifacts="$build/artifacts/$name"
    log="$build/logs/$name.log"
    mkdir -p "$corpus" "$artifacts" "$(dirname "$log")"
    read -ra options <<<"$own"
    options+=(-max_total_time="$seconds" -timeout=20 -rss_limit_mb=2048 -print_final_stats=1
              -artifact_prefix="$artifacts/")
    [[ "$dictionary" != "-" ]] && options+=(-dict="$dictionaries/$dictionary")
    echo "fuzz: $name for ${seconds}s"
    # shellcheck disable=SC2086 # the seed folders are separate words
    if "$build/fuzz/$name" "${options[@]}" "$corpus" $seedDirs >"$log" 2>&1; then
        status=ok
    else
        status=FAILED
        failed+=("$name")
        tail -n 40 "$log" >&2
        artifact=$(grep -oE "Test unit written to [^ ]+" "$log" | tail -1 | cut -d' ' -f5)
        echo "fuzz: $name failed; log $log; replay: $build/fuzz/$name ${artifact:-<artifact>}" >&2
    fi
    runs=$(grep -oE "stat::number_of_executed_units: *[0-9]+" "$log" | grep -oE "[0-9]+$" || true)
    units=$(find "$corpus" -type f | wc -l)
    summary+=("$(printf '%-22s %-6s %12s executions  %6s corpus inputs' "$name" "$status" "${runs:-?}" "$units")")
done

echo
echo "fuzz: ${seconds}s per target"
printf '  %s\n' "${summary[@]}"
if ((${#failed[@]})); then
    echo "fuzz: failing targets: ${failed[*]}" >&2
    exit 1
fi
