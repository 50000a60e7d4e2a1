#!/usr/bin/env bash
# Runs the kernel over the real-world samples of ../shared/corpus (CTest label "corpus").
set -euo pipefail
cd "$(dirname "$0")/.."
preset="${1:-default}"
scripts/build.sh "$preset"
ctest --preset "$preset" -L corpus
