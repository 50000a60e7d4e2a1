#!/usr/bin/env bash
# Sets up the machine, then configures and builds one preset (default: "default").
set -euo pipefail
cd "$(dirname "$0")/.."
preset="${1:-default}"
scripts/setup.sh
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset"
