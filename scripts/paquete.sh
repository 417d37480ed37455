#!/usr/bin/env bash
# Makes the Debian package and its debug symbols' package, and checks them:
# the contents, the dependencies (the fonts of the screens too), the
# hardening of the program, the symbols, lintian (pedantic), the desktop entry
# and the AppStream data, the manual page, --help and --version without a
# display, and the installed program started (without a display) in a
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
falta appstreamcli && herramientas+=(appstream)
falta fc-match && herramientas+=(fontconfig)
falta readelf && herramientas+=(binutils)
falta man && herramientas+=(man-db)
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
# What the package installs: the program and the SQL Server deployment script.
cmake --build build -j"$(nproc)" --target control-pagos despliegue_sqlserver > /dev/null
rm -f build/control-pagos_*.deb build/control-pagos-dbgsym_*.ddeb
(cd build && cpack -G DEB > /dev/null)
deb=$(ls build/control-pagos_*.deb)
version=$(dpkg-deb -f "$deb" Version)
echo "Paquete: $deb ($(du -k "$deb" | cut -f1) KB)"

# Contents: the program, its menu entry, icon and documents; nothing of a build.
contenido=$(dpkg-deb --contents "$deb" | awk '{print $6}')
for ruta in ./usr/bin/control-pagos ./usr/share/applications/control-pagos.desktop \
            ./usr/share/icons/hicolor/scalable/apps/control-pagos.svg \
            ./usr/share/icons/hicolor/48x48/apps/control-pagos.png \
            ./usr/share/doc/control-pagos/copyright ./usr/share/doc/control-pagos/changelog.gz \
            ./usr/share/control-pagos/despliegue.sql ./usr/share/man/man1/control-pagos.1.gz \
            ./usr/share/metainfo/ve.com.controldepagos.control_pagos.metainfo.xml \
            ./usr/share/lintian/overrides/control-pagos; do
  grep -qxF "$ruta" <<< "$contenido" || { echo "ERROR: falta $ruta en el paquete"; exit 1; }
done
if grep -E '\.(h|a|cmake|o)$|/include/|/test|/bench|capturas' <<< "$contenido"; then
  echo "ERROR: el paquete lleva archivos de la compilación"
  exit 1
fi
depende=$(dpkg-deb -f "$deb" Depends)
depende_de() { grep -qE "(^|, )$1( |,|$)" <<< "$depende"; }
for p in libqt6widgets6 libqt6printsupport6 libqt6sql6 libqt6sql6-odbc libsqlite3-0 unixodbc tdsodbc qt6-translations-l10n \
         fonts-dejavu-core fonts-dejavu-extra; do
  depende_de "$p" || { echo "ERROR: Depends no nombra $p"; exit 1; }
done
echo "Contenido: $(wc -l <<< "$contenido") entradas; Depends: $depende"

# The faces of the screens, each as fontconfig finds it, and the package each
# comes from, which the package must depend on: the default face and the
# receipts' (DejaVu Sans), the console grid's narrowed one (DejaVu Sans
# Condensed), the fixed-pitch lists (DejaVu Sans Mono); "Courier New" (rate
# notices, statistics) is not on Debian and must fall to a fixed-pitch face.
declare -A caras=(["DejaVu Sans"]="DejaVu Sans" ["DejaVu Sans Condensed"]="DejaVu Sans:width=75"
                  ["DejaVu Sans Mono"]="DejaVu Sans Mono")
nombradas=$(grep -rhoE '(QFont( [A-Za-z_]+)?|setFamily)\(QStringLiteral\("[^"]+"\)' \
              app shell capture catalogues consoles rates statistics | sed -E 's/.*\("([^"]+)"\)$/\1/' | sort -u)
while IFS= read -r familia; do
  [ -z "$familia" ] || [ "$familia" = "Courier New" ] || [ -n "${caras[$familia]:-}" ] ||
    { echo "ERROR: las pantallas nombran la letra \"$familia\", que este guion no comprueba"; exit 1; }
done <<< "$nombradas"
if falta fc-match; then
  omitido "letras de las pantallas (falta el paquete fontconfig)"
else
  de_las_caras=()
  for cara in "${!caras[@]}"; do
    hallada=$(fc-match -f '%{fullname[0]}' "${caras[$cara]}")
    [ "$hallada" = "$cara" ] || { echo "ERROR: la letra \"$cara\" no está en esta máquina (se usaría \"$hallada\")"; exit 1; }
    archivo=$(fc-match -f '%{file}' "${caras[$cara]}")
    de=$(dpkg -S "$archivo" 2> /dev/null | cut -d: -f1)
    { [ -n "$de" ] && depende_de "$de"; } ||
      { echo "ERROR: la letra \"$cara\" ($archivo) viene de '$de', que Depends no nombra"; exit 1; }
    de_las_caras+=("$de")
  done
  [ "$(fc-match -f '%{spacing}' 'Courier New')" = 100 ] ||
    { echo "ERROR: \"Courier New\" no cae en una letra de ancho fijo: $(fc-match 'Courier New')"; exit 1; }
  echo "Letras: $(printf '"%s" ' "${!caras[@]}")de $(printf '%s\n' "${de_las_caras[@]}" | sort -u | tr '\n' ' ')"
fi

raiz=$(mktemp -d)
programa=""
trap '[ -z "$programa" ] || kill "$programa" 2> /dev/null || true; rm -rf "$raiz"' EXIT
dpkg -x "$deb" "$raiz/sistema"
binario="$raiz/sistema/usr/bin/control-pagos"

# Hardening: a position-independent executable, relocations read-only after
# every symbol is bound at start, the checked functions of _FORTIFY_SOURCE.
if falta readelf; then
  omitido "endurecimiento y símbolos (falta el paquete binutils)"
else
  cabecera=$(LC_ALL=C readelf -h -l -d "$binario")
  grep -qE 'Type: +DYN' <<< "$cabecera" && grep -qE 'FLAGS_1.*\bPIE\b' <<< "$cabecera" ||
    { echo "ERROR: el programa no es un ejecutable independiente de la posición (PIE)"; exit 1; }
  grep -q GNU_RELRO <<< "$cabecera" || { echo "ERROR: el programa no tiene relro"; exit 1; }
  grep -qE '\(BIND_NOW\)|FLAGS_1.*\bNOW\b' <<< "$cabecera" ||
    { echo "ERROR: el programa no se enlazó con -z now"; exit 1; }
  grep -qE ' __[a-z_]+_chk(@|$)' <<< "$(LC_ALL=C readelf --dyn-syms -W "$binario")" ||
    { echo "ERROR: el programa no usa las funciones comprobadas de _FORTIFY_SOURCE"; exit 1; }
  echo "Endurecido: PIE, relro, now, fortify"

  # The debug symbols: out of the program, into the -dbgsym package, found by
  # the program's build id.
  ddeb=$(ls build/control-pagos-dbgsym_*.ddeb 2> /dev/null || true)
  [ -n "$ddeb" ] || { echo "ERROR: falta el paquete de símbolos control-pagos-dbgsym"; exit 1; }
  grep -q '\.debug_info' <<< "$(LC_ALL=C readelf -S -W "$binario")" && { echo "ERROR: el programa lleva sus símbolos de depuración"; exit 1; }
  id=$(LC_ALL=C readelf -n "$binario" | sed -n 's/.*Build ID: *//p')
  [ -n "$id" ] || { echo "ERROR: el programa no tiene build id"; exit 1; }
  dpkg -x "$ddeb" "$raiz/simbolos"
  simbolos="$raiz/simbolos/usr/lib/debug/.build-id/${id:0:2}/${id:2}.debug"
  [ -f "$simbolos" ] && grep -q '\.debug_info' <<< "$(LC_ALL=C readelf -S -W "$simbolos" 2> /dev/null)" ||
    { echo "ERROR: control-pagos-dbgsym no tiene los símbolos del build id $id"; exit 1; }
  grep -qF "control-pagos (= $version)" <<< "$(dpkg-deb -f "$ddeb" Depends)" ||
    { echo "ERROR: control-pagos-dbgsym no depende de control-pagos (= $version)"; exit 1; }
  echo "Símbolos: $ddeb ($(du -k "$ddeb" | cut -f1) KB), build id $id"
fi

# lintian, pedantic, on both packages: no tag at all, of any level, but those
# the package overrides, each with its reason (packaging/lintian-overrides).
if falta lintian; then
  omitido "lintian (falta el paquete lintian)"
else
  informe=$(lintian --allow-root --pedantic --display-info "$deb" ${ddeb:-} 2>&1 || true)
  if grep -qE '^[EWIPX]:' <<< "$informe"; then
    echo "$informe"
    echo "ERROR: lintian informa (los hardening-* piden las opciones del CMakeLists.txt principal)"
    exit 1
  fi
  echo "lintian --pedantic: sin etiquetas"
fi

# The manual page: groff reads it without a warning, and it names each option
# and each key of the settings that the program reads.
pagina="$raiz/sistema/usr/share/man/man1/control-pagos.1.gz"
if falta man; then
  omitido "página de manual (falta el paquete man-db)"
else
  avisos=$(LC_ALL=C.UTF-8 MANWIDTH=80 man --warnings -E UTF-8 -l "$pagina" 2>&1 > /dev/null || true)
  [ -z "$avisos" ] || { echo "$avisos"; echo "ERROR: la página de manual tiene avisos"; exit 1; }
fi
texto=$(zcat "$pagina")
claves=$(grep -oE 's\.(value|contains)\(QStringLiteral\("[a-z]+/[a-z]+"\)' app/arranque.cpp | grep -oE '[a-z]+/[a-z]+' | sort -u)
[ "$(wc -l <<< "$claves")" -ge 5 ] || { echo "ERROR: no se hallaron las claves de los ajustes en app/arranque.cpp"; exit 1; }
for nombre in $claves --help --version; do
  grep -qF -- "$(sed 's/-/\\-/g' <<< "$nombre")" <<< "$texto" || { echo "ERROR: la página de manual no nombra $nombre"; exit 1; }
done
echo "Página de manual: $(wc -w <<< "$claves") claves de los ajustes, --help y --version"

# --help and --version of the installed program, on a terminal without a display.
sin_pantalla() { env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM HOME="$raiz" "$binario" "$@"; }
[ "$(sin_pantalla --version)" = "control-pagos (Control de Pagos) $version" ] ||
  { echo "ERROR: --version del programa instalado: $(sin_pantalla --version 2>&1 || true)"; exit 1; }
grep -q '^Uso: control-pagos' <<< "$(sin_pantalla --help)" || { echo "ERROR: --help del programa instalado"; exit 1; }
echo "--help y --version: sin pantalla, versión $version"

if falta desktop-file-validate; then
  omitido "desktop-file-validate (falta el paquete desktop-file-utils)"
else
  desktop-file-validate "$raiz/sistema/usr/share/applications/control-pagos.desktop"
  echo "Entrada del escritorio: válida"
fi

# The AppStream data, which software centres list: valid (pedantic, without
# the network), for the package's desktop entry, binary and version.
metainfo="$raiz/sistema/usr/share/metainfo/ve.com.controldepagos.control_pagos.metainfo.xml"
if falta appstreamcli; then
  omitido "AppStream (falta el paquete appstream)"
else
  appstreamcli validate --pedantic --no-net --explain "$metainfo" ||
    { echo "ERROR: los datos de AppStream no son válidos"; exit 1; }
fi
for esperado in '<launchable type="desktop-id">control-pagos.desktop</launchable>' '<binary>control-pagos</binary>' \
                "<release version=\"$version\""; do
  grep -qF "$esperado" "$metainfo" || { echo "ERROR: los datos de AppStream no dicen $esperado"; exit 1; }
done
echo "AppStream: válido, versión $version"

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
