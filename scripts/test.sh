#!/usr/bin/env bash
# Sets up, builds and runs all tests of one preset (default: "default"). The real-world
# samples of ../shared/corpus run separately: scripts/test-corpus.sh.
set -euo pipefail
cd "$(dirname "$0")/.."
preset="${1:-default}"
scripts/build.sh "$preset"
ctest --preset "$preset" -LE corpus
