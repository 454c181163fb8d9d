#!/usr/bin/env bash
# Whether a program succeeds and prints what it should: output_test.sh EXPECTED_FILE PROGRAM ARGUMENTS...
set -euo pipefail
expected=$1
shift
output=$("$@")
diff --strip-trailing-cr <(printf '%s\n' "$output") "$expected"
