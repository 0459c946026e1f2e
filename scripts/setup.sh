#!/usr/bin/env bash
# Installs the Debian packages the project needs when they are missing, then configures and
# builds one preset (default: release).  Usage: scripts/setup.sh [PRESET]
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
preset=${1:-release}

missing=()
while read -r pkg; do
    [[ -z "$pkg" || "$pkg" == \#* ]] && continue
    dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null | grep -q "install ok installed" || missing+=("$pkg")
done < "$root/scripts/packages.txt"

if ((${#missing[@]})); then
    echo "setup: installing ${missing[*]}"
    sudo=""
    [[ $(id -u) -ne 0 ]] && sudo="sudo"
    $sudo apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi

cd "$root"
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset" -j "$(nproc)"
