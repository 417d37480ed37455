#!/usr/bin/env bash
# The README's screenshots, taken again: the program on a new demo database
# inside a virtual display of 1600x1000, each main screen drawn into
# docs/capturas/, and the first page of a receipt's PDF. A screen that is not
# part of this build is left out with a line.
set -euo pipefail
cd "$(dirname "$0")/.."

destino=docs/capturas
if ! command -v xvfb-run > /dev/null; then
  echo "OMITIDO: capturas (falta xvfb-run, paquete xvfb)"
  exit 0
fi
[ -d build ] || cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo > /dev/null
cmake --build build -j"$(nproc)" --target capturas > /dev/null

trabajo=$(mktemp -d)
trap 'rm -rf "$trabajo"' EXIT
mkdir -p "$destino"
# A clean home, so that no settings file of this machine changes what is shown.
env -u XDG_CONFIG_HOME -u XDG_DATA_HOME HOME="$trabajo" LANG=C.UTF-8 \
  xvfb-run -a -s "-screen 0 1600x1000x24" build/capturas "$destino" "$trabajo"

if [ ! -f "$trabajo/recibo.pdf" ]; then
  echo "OMITIDO: página del recibo (no se imprimió ningún recibo)"
elif ! command -v pdftoppm > /dev/null; then
  echo "OMITIDO: página del recibo (falta pdftoppm, paquete poppler-utils)"
else
  pdftoppm -png -r 60 -f 1 -l 1 -singlefile "$trabajo/recibo.pdf" "$destino/04-recibo"
  echo "captura: $destino/04-recibo.png"
fi
