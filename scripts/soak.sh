#!/usr/bin/env bash
# Lets two saving programs, the program's windows and the demo engine work on one server file, one of those that save
# being killed again and again, and looks at what is left:
#   scripts/soak.sh [minutes]     60 by default
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install.sh
cmake --preset release >/dev/null
cmake --build --preset release --target zelvan-scheduler-soak
exec build/release/soak/zelvan-scheduler-soak "${1:-60}"
