#!/usr/bin/env bash
# Runs one fuzz target for a fixed time on its seed corpus, as a test: any
# crash, leak, sanitizer report, input slower than a second or allocation of
# 64 MB or more fails it. New inputs go to a scratch folder, never into the
# checked-in seeds.
#   run-target.sh <binary> <seed folder> <dictionary> <scratch folder> <seconds>
set -euo pipefail
binary=$1 seeds=$2 dict=$3 work=$4 seconds=$5

rm -rf "$work"
mkdir -p "$work/corpus" "$work/artifacts"
exec "$binary" -max_total_time="$seconds" -timeout=1 -rss_limit_mb=2048 -malloc_limit_mb=64 \
  -dict="$dict" -artifact_prefix="$work/artifacts/" -print_final_stats=1 \
  "$work/corpus" "$seeds"
