#!/usr/bin/env bash
# Installs the Debian packages that building, testing and benchmarking zorvik need. Idempotent:
# packages already present are skipped, and nothing is fetched when all are there.
set -euo pipefail

packages=(
  build-essential cmake pkg-config git
  libsimdjson-dev libssl-dev libicu-dev libplist-dev libmimalloc-dev
  googletest libgtest-dev libgmock-dev libbenchmark-dev
  clang libclang-rt-14-dev
  hyperfine
)

missing=()
for package in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$package")
  fi
done

if ((${#missing[@]} > 0)); then
  sudo=""
  if [ "$(id -u)" -ne 0 ]; then sudo="sudo"; fi
  echo "Installing: ${missing[*]}"
  $sudo apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
