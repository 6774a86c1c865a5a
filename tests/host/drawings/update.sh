#!/bin/bash
# Writes the pictures of the drawings afresh, from what the readers make of them now. Look at the
# difference and at the pictures before committing them.
set -euo pipefail
cd "$(dirname "$0")/../../.."
cmake --build build/native --target k7_host_tests
K7_UPDATE_GOLDEN=1 K7_SAMPLES=$PWD/host/samples build/native/bin/k7_host_tests --gtest_filter='*Drawings*'
git --no-pager diff --stat -- tests/host/drawings
