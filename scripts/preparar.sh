#!/usr/bin/env bash
# Installs what the project needs on a Debian 12 machine when it is missing,
# then configures it in ./build and builds the targets given (the program
# alone for the demo), or everything without one.
# Usage: scripts/preparar.sh [target...]
set -euo pipefail
cd "$(dirname "$0")/.."

paquetes=(qt6-base-dev qt6-base-dev-tools qt6-qpa-plugins libqt6sql6-odbc cmake ninja-build g++
          tdsodbc unixodbc unixodbc-dev libsqlite3-dev xvfb xauth fonts-dejavu-core poppler-utils
          qt6-translations-l10n fonts-dejavu-extra libxlsxwriter-dev qt6-charts-dev
          libqt6opengl6-dev unzip)
faltan=()
for p in "${paquetes[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || faltan+=("$p")
done
if [ ${#faltan[@]} -gt 0 ]; then
  echo "Instalando: ${faltan[*]}"
  sudo_cmd=""
  [ "$(id -u)" -ne 0 ] && sudo_cmd="sudo"
  $sudo_cmd apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo_cmd apt-get install -y -qq --no-install-recommends "${faltan[@]}"
fi

# AVISOS_COMO_ERRORES=1 in the environment (CI sets it) makes every warning stop the build.
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
      -DAVISOS_COMO_ERRORES="$([ -n "${AVISOS_COMO_ERRORES:-}" ] && echo ON || echo OFF)" > /dev/null
if [ $# -gt 0 ]; then
  cmake --build build -j"$(nproc)" --target "$@"
else
  cmake --build build -j"$(nproc)"
fi
