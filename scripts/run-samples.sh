#!/usr/bin/env bash
# The main job on Pellix's own sample set: sets up, builds, writes the samples and has the
# host program make their previews, printing one row a file (code, source, message, and the
# previews made). Files that must be refused show their codes; the run itself succeeds.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/build.sh
scripts/make-samples.sh build/samples/in
rm -rf build/samples/out
status=0
build/stage/bin/pellix preview -s 800x800 -o build/samples/out build/samples/in || status=$?
[ "$status" -le 1 ] || exit "$status"
# A request beyond 10000 pixels goes to GraphicsMagick at once; the log says so.
build/stage/bin/pellix preview -s 20000x100 -o build/samples/out/oversize \
  build/samples/in/raster/photo.jpg 2>&1 | grep -E "not err|photo.jpg"
echo "previews are in build/samples/out"
