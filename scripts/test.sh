#!/usr/bin/env bash
# Sets up, builds and runs every test of one preset (default: release).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
preset=${1:-release}
"$root/scripts/setup.sh" "$preset"
cd "$root"
ctest --preset "$preset"
