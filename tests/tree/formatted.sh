#!/usr/bin/env bash
# Passes when every C++ file of the tree is laid out as .clang-format says.
set -euo pipefail
find src assets tools tests bench fuzz -name '*.cpp' -o -name '*.h' | sort | xargs clang-format --dry-run -Werror
