#!/usr/bin/env bash
# Builds everything (the program, the tests, the benchmarks) and runs the
# whole test suite, without a display.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/preparar.sh
cd build
QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j"$(nproc)"
