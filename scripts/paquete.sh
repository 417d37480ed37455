#!/usr/bin/env bash
# Makes the Debian package and checks it: its contents, lintian, the desktop
# entry, and the installed program started (without a display) in a
# throw-away root, up to LOGIN with the day's copy of its new database.
# A step whose tools are missing is left out with a line saying so.
set -euo pipefail
cd "$(dirname "$0")/.."

omitido() { echo "OMITIDO: $*"; }
falta() { ! command -v "$1" > /dev/null; }

# The checking tools, when this machine can install them.
herramientas=()
falta lintian && herramientas+=(lintian)
falta desktop-file-validate && herramientas+=(desktop-file-utils)
falta dpkg-shlibdeps && herramientas+=(dpkg-dev)
if [ ${#herramientas[@]} -gt 0 ] && command -v apt-get > /dev/null; then
  sudo_cmd=""
  [ "$(id -u)" -ne 0 ] && sudo_cmd="sudo -n"
  if ! { $sudo_cmd apt-get update -qq && DEBIAN_FRONTEND=noninteractive \
         $sudo_cmd apt-get install -y -qq --no-install-recommends "${herramientas[@]}"; } > /dev/null 2>&1; then
    echo "No se pudieron instalar: ${herramientas[*]}"
  fi
fi

if falta cpack || falta dpkg-deb || falta dpkg-shlibdeps; then
  omitido "paquete .deb (faltan cpack, dpkg-deb o dpkg-shlibdeps)"
  exit 0
fi
[ -d build ] || cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo > /dev/null
cmake --build build -j"$(nproc)" --target control-pagos > /dev/null
rm -f build/control-pagos_*.deb
(cd build && cpack -G DEB > /dev/null)
deb=$(ls build/control-pagos_*.deb)
echo "Paquete: $deb ($(du -k "$deb" | cut -f1) KB)"

# Contents: the program, its menu entry, icon and documents; nothing of a build.
contenido=$(dpkg-deb --contents "$deb" | awk '{print $6}')
for ruta in ./usr/bin/control-pagos ./usr/share/applications/control-pagos.desktop \
            ./usr/share/icons/hicolor/scalable/apps/control-pagos.svg \
            ./usr/share/icons/hicolor/48x48/apps/control-pagos.png \
            ./usr/share/doc/control-pagos/copyright ./usr/share/doc/control-pagos/changelog.gz \
            ./usr/share/control-pagos/despliegue.sql; do
  grep -qxF "$ruta" <<< "$contenido" || { echo "ERROR: falta $ruta en el paquete"; exit 1; }
done
if grep -E '\.(h|a|cmake|o)$|/include/|/test|/bench|capturas' <<< "$contenido"; then
  echo "ERROR: el paquete lleva archivos de la compilación"
  exit 1
fi
depende=$(dpkg-deb -f "$deb" Depends)
for p in libqt6widgets6 libqt6printsupport6 libqt6sql6 libqt6sql6-odbc libsqlite3-0 unixodbc tdsodbc qt6-translations-l10n; do
  grep -qE "(^|, )$p( |,|$)" <<< "$depende" || { echo "ERROR: Depends no nombra $p"; exit 1; }
done
echo "Contenido: $(wc -l <<< "$contenido") entradas; Depends: $depende"

if falta lintian; then
  omitido "lintian (falta el paquete lintian)"
else
  informe=$(lintian --allow-root "$deb" 2>&1 || true)
  [ -n "$informe" ] && echo "$informe"
  if grep -q '^E:' <<< "$informe"; then
    echo "ERROR: lintian informa errores"
    exit 1
  fi
  echo "lintian: $(grep -c '^E:' <<< "$informe" || true) errores, $(grep -c '^W:' <<< "$informe" || true) avisos"
fi

raiz=$(mktemp -d)
programa=""
trap '[ -z "$programa" ] || kill "$programa" 2> /dev/null || true; rm -rf "$raiz"' EXIT
dpkg -x "$deb" "$raiz/sistema"

if falta desktop-file-validate; then
  omitido "desktop-file-validate (falta el paquete desktop-file-utils)"
else
  desktop-file-validate "$raiz/sistema/usr/share/applications/control-pagos.desktop"
  echo "Entrada del escritorio: válida"
fi

# The installed program on a home of its own: it creates the demo database,
# opens LOGIN and leaves the day's copy, then waits for the code.
casa="$raiz/casa"
mkdir -p "$casa"
env -u XDG_CONFIG_HOME -u XDG_DATA_HOME HOME="$casa" QT_QPA_PLATFORM=offscreen \
  "$raiz/sistema/usr/bin/control-pagos" > "$raiz/salida.txt" 2>&1 &
programa=$!
copia="$casa/.local/share/ControlDePagos/copias/ramil-$(date +%F).db"
for _ in $(seq 1 120); do
  [ -f "$copia" ] && break
  kill -0 "$programa" 2> /dev/null || break
  sleep 0.5
done
sleep 1
if ! kill -0 "$programa" 2> /dev/null; then
  cat "$raiz/salida.txt"
  echo "ERROR: el programa instalado terminó antes de LOGIN"
  exit 1
fi
if [ ! -f "$copia" ]; then
  cat "$raiz/salida.txt"
  echo "ERROR: el programa instalado no llegó a LOGIN con la copia del día"
  exit 1
fi
kill "$programa"
wait "$programa" 2> /dev/null || true
programa=""
echo "Programa instalado: llegó a LOGIN; base nueva y copia del día en $(dirname "$copia" | sed "s|$casa|~|")"
echo "Paquete comprobado."
