#!/bin/bash
# Writes the golden transcripts afresh from what the driver sends now. Look at the difference before
# committing it: every changed byte is one that a machine will receive.
set -euo pipefail
cd "$(dirname "$0")/../.."
K7_UPDATE_GOLDEN=1 ./k7 end-to-end
git --no-pager diff --stat -- tests/golden
