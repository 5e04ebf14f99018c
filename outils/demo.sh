#!/usr/bin/env bash
# Makes the files of the demonstration restaurant anew from its spreadsheets, demo/carte. Its settings, wwinqx42.wdo and
# wfichdir.wdo, were made on the terminal and stay.
set -euo pipefail
cd "$(dirname "$0")/.."

outils/paquets.sh programme tests
cmake --preset release >/dev/null
cmake --build --preset release --target orvalune-carte
build/release/orvalune-carte fabrique demo/carte demo
cp demo/{orvalune,worvalune,w_styl72}.wdo demo/reseau
