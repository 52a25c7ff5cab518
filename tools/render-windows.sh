#!/bin/sh
# Draws the window offscreen into docs/images/ (PNG), empty and with a network of the
# example devices of share/velmora. Needs the normal build (./build.sh test or run).
set -eu
cd "$(dirname "$0")/.."
cmake --build build -j "${JOBS:-2}" --target velmora-render
QT_QPA_PLATFORM=offscreen build/app/velmora-render share/velmora docs/images
