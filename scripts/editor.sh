#!/usr/bin/env bash
# Builds the request editor page (scripts/web.sh) and serves build/web/site
# on 127.0.0.1 for a person to open in a browser; Ctrl-C stops it, and it
# stops by itself after an hour.
#
# Usage: scripts/editor.sh [PORT]   (default 8023)
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/web.sh
exec node web/test/serve.js build/web/site "${1:-8023}" 3600
