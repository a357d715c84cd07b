#!/usr/bin/env bash
# Installs every build and test dependency on Debian 12. Does nothing when
# they are all present. Needs root (or sudo) only when something is missing.
set -euo pipefail

packages=(
  build-essential cmake ninja-build pkg-config git clang libclang-rt-14-dev
  libgtest-dev libgmock-dev libbenchmark-dev
  libplist-dev libplist++-dev libplist-utils libicu-dev zlib1g-dev libisal-dev libdeflate-dev libwoff-dev libbrotli-dev
  libcli11-dev nlohmann-json3-dev libsqlite3-dev libsqlitecpp-dev sqlite3
  python3 python3-fonttools python3-brotli woff2 fontconfig
  python3-venv python3-setuptools python3-wheel python3-pytest python3-distributed python3-pandas
  fonts-dejavu-core fonts-liberation2 fonts-urw-base35 fonts-texgyre fonts-noto-cjk gsfonts
  fonts-wqy-zenhei fonts-lmodern lmodern xfonts-scalable hyperfine time
)

missing=()
for package in "${packages[@]}"; do
  status=$(dpkg-query -W -f='${Status}' "$package" 2>/dev/null || true)
  [[ "$status" == "install ok installed" ]] || missing+=("$package")
done

if ((${#missing[@]} == 0)); then
  exit 0
fi

echo "Installing: ${missing[*]}"
run_as_root=()
if ((EUID != 0)); then
  run_as_root=(sudo)
fi
export DEBIAN_FRONTEND=noninteractive
"${run_as_root[@]}" apt-get update -q
"${run_as_root[@]}" apt-get install -y -q --no-install-recommends "${missing[@]}"
