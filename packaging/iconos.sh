#!/usr/bin/env bash
# Draws the icon's PNG sizes from its SVG (run after a change of the SVG and
# commit the PNGs; the build only installs them).
set -euo pipefail
cd "$(dirname "$0")/iconos"
if ! command -v rsvg-convert > /dev/null; then
  sudo_cmd=""
  [ "$(id -u)" -ne 0 ] && sudo_cmd="sudo"
  DEBIAN_FRONTEND=noninteractive $sudo_cmd apt-get install -y -qq --no-install-recommends librsvg2-bin
fi
for n in 16 22 24 32 48 64 128 256; do
  rsvg-convert -w "$n" -h "$n" control-pagos.svg -o "control-pagos-$n.png"
done
ls -l ./*.png
