#!/usr/bin/env bash
# Sets up, builds and runs the main job: the kova host imports the bundled samples, sends them
# through the translation plug-in and a graph and back, and writes the results, a report and a
# profile trace into ./kova-demo (or the folder given with --out).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/setup.sh" release
"$root/build/release/bin/kova" demo "$@"
