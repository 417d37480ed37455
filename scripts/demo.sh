#!/usr/bin/env bash
# Builds the client alone (no tests, no benchmarks: scripts/pruebas.sh builds
# those) and starts it on the embedded demo database (created on the first
# start). Without a display it runs inside a virtual one.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/preparar.sh control-pagos
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
  exec xvfb-run -a -s "-screen 0 1920x1080x24" ./build/control-pagos
fi
exec ./build/control-pagos
