#!/usr/bin/env bash
# Builds the documentation site, build/site/html, from the public headers and the guides. A warning is a failure.
set -euo pipefail
cd "$(dirname "$0")/.."
mkdir -p build/site
doxygen docs/Doxyfile
echo "The site is at build/site/html/index.html."
