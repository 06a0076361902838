#!/usr/bin/env bash
# Every C++ file is laid out by .clang-format.
set -euo pipefail
git ls-files '*.h' '*.cpp' | xargs clang-format-14 --dry-run --Werror
