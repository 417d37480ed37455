#!/usr/bin/env bash
# The README's screenshots, taken again: the program on a new demo database
# inside a virtual display of 1600x1000, each main screen drawn into
# docs/capturas/, the chart of the daily statistics, and the first pages of a
# receipt's PDF and of the statistics report's. A screen that is not
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

# The first page of a PDF the program printed, as a picture.
primera_pagina() { # <pdf> <picture without .png> <what it is> <dots per inch>
  if [ ! -f "$1" ]; then
    echo "OMITIDO: $3 (no se imprimió)"
  elif ! command -v pdftoppm > /dev/null; then
    echo "OMITIDO: $3 (falta pdftoppm, paquete poppler-utils)"
  else
    pdftoppm -png -r "$4" -f 1 -l 1 -singlefile "$1" "$2"
    echo "captura: $2.png"
  fi
}
primera_pagina "$trabajo/recibo.pdf" "$destino/04-recibo" "página del recibo" 60
primera_pagina "$trabajo/informe.pdf" "$destino/08-informe" "página del informe de estadísticas" 90
