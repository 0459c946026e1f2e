#!/usr/bin/env bash
# Sets up, builds and runs the main job: the kova host loads the translation plug-in, binds
# it to a board and reports what it makes of every kind of graph port.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/setup.sh" release
"$root/build/release/bin/kova" plugin-info "$@"
