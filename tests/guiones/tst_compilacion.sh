#!/usr/bin/env bash
# What the README's two commands build: scripts/demo.sh only the program it
# starts, scripts/pruebas.sh every program before the tests run.
# The scripts run on a copy of scripts/, with cmake, ctest and xvfb-run
# standing in that only note what they were asked; this build's own Ninja
# files then tell which programs those builds link.
# Usage: tst_compilacion.sh <source folder> <build folder> <ninja>
set -euo pipefail
fuente=$1
compilacion=$2
ninja=$3
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT

mkdir -p "$tmp/bin" "$tmp/copia/build" "$tmp/notas"
cp -r "$fuente/scripts" "$tmp/copia/"
cat > "$tmp/bin/cmake" <<'FIN'
#!/usr/bin/env bash
# A build call notes its targets ("all" without one); nothing is built.
[ "${1:-}" = --build ] || exit 0
shift 2
objetivos=()
while [ $# -gt 0 ]; do
  case "$1" in
    --target|-t) shift
                 while [ $# -gt 0 ] && [[ "$1" != -* ]]; do objetivos+=("$1"); shift; done ;;
    --) break ;;
    *) shift ;;
  esac
done
echo "${objetivos[*]:-all}" >> "$NOTAS/compila"
FIN
cat > "$tmp/bin/xvfb-run" <<'FIN'
#!/usr/bin/env bash
echo "${@: -1}" >> "$NOTAS/inicia"
FIN
cat > "$tmp/bin/ctest" <<'FIN'
#!/usr/bin/env bash
echo ctest >> "$NOTAS/compila"
FIN
# Every package is there: nothing is installed.
cat > "$tmp/bin/dpkg-query" <<'FIN'
#!/usr/bin/env bash
printf 'install ok installed'
FIN
chmod +x "$tmp/bin/"*

fallos=0
falla() { echo "FALLA: $*"; fallos=$((fallos + 1)); }

# The programs this build links, and those the given targets link.
programas=$("$ninja" -C "$compilacion" -t targets all | sed -n 's/: CXX_EXECUTABLE_LINKER.*//p' | sort)
enlaza() {
  local t
  for t in "$@"; do "$ninja" -C "$compilacion" -t commands "$t"; done |
    grep -oE ' -o [^ ]+' | cut -c5- | sort -u | comm -12 - <(echo "$programas")
}
[ "$(wc -l <<< "$programas")" -gt 1 ] || falla "la compilación no tiene programas de pruebas: $programas"

corre() {
  rm -f "$tmp/notas/"*
  (cd "$tmp" && env -u DISPLAY -u WAYLAND_DISPLAY PATH="$tmp/bin:$PATH" NOTAS="$tmp/notas" "copia/scripts/$1") \
    > "$tmp/salida" 2>&1 || { cat "$tmp/salida"; falla "$1 terminó con error"; }
}

# The demo: one build, of the program alone, which it then starts.
corre demo.sh
compila=$(cat "$tmp/notas/compila" 2> /dev/null || true)
[ "$(wc -l <<< "$compila")" -eq 1 ] || falla "demo.sh compila $(wc -l <<< "$compila") veces: $compila"
read -ra objetivos <<< "$compila"
enlazados=$(enlaza "${objetivos[@]}")
[ "$enlazados" = control-pagos ] || falla "demo.sh compila ${objetivos[*]}, que enlaza: $(echo $enlazados)"
inicia=$(cat "$tmp/notas/inicia" 2> /dev/null || true)
[ "$inicia" = ./build/control-pagos ] || falla "demo.sh inicia '$inicia', no ./build/control-pagos"

# The tests: every program built, then ctest.
corre pruebas.sh
compila=$(cat "$tmp/notas/compila" 2> /dev/null || true)
[ "$(tail -n 1 <<< "$compila")" = ctest ] || falla "pruebas.sh no termina con ctest: $compila"
read -ra objetivos <<< "$(head -n -1 <<< "$compila" | tr '\n' ' ')"
[ ${#objetivos[@]} -gt 0 ] || falla "pruebas.sh no compila antes de ctest"
enlazados=$(enlaza "${objetivos[@]}")
[ "$enlazados" = "$programas" ] || falla "pruebas.sh deja sin compilar: $(comm -13 <(echo "$enlazados") <(echo "$programas") | tr '\n' ' ')"

[ "$fallos" -eq 0 ] && echo "demo.sh compila solo control-pagos; pruebas.sh, los $(wc -l <<< "$programas") programas"
exit $(( fallos > 0 ))
