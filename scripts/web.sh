#!/usr/bin/env bash
# Builds the WebAssembly package and the request editor page:
#   build/web/lytfilterparser-VERSION.tgz  the npm package (npm pack)
#   build/web/package/                      what the tarball holds
#   build/web/site/                         the editor page, plain static files
# Needs emscripten (scripts/deps.sh installs it) and node 20 or later; the
# page's and the tests' npm packages come from web/package-lock.json.
#
# Usage: scripts/web.sh [--package-only | --bench]
#   --package-only  only the package
#   --bench         then also time the package against a native build of the
#                   same sources (build/web/native) and print the rows of
#                   bench/RESULTS.md's WebAssembly section
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD
out=$root/build/web

# Debian's emcc runs its JavaScript tools with node and finds their modules
# (acorn ...) only here.
export NODE_PATH=/usr/share/nodejs
export CMAKE_BUILD_PARALLEL_LEVEL=${CMAKE_BUILD_PARALLEL_LEVEL:-2}

if [[ ! -f $out/wasm/build.ninja ]]; then
  # emcmake names node as the emulator with an option that node 20 refuses.
  nice emcmake cmake -S web -B "$out/wasm" -G Ninja -DCMAKE_CROSSCOMPILING_EMULATOR="$(command -v node)" >/dev/null
fi
nice cmake --build "$out/wasm" --target lfp

version=$(sed -n 's/^#define LFP_LIBRARY_VERSION_STRING "\(.*\)"$/\1/p' "$out/wasm/generated/lytFilterParser/LibraryVersion.h")
stage=$out/package
rm -rf "$stage"
mkdir -p "$stage"
cp web/package/index.js web/package/index.d.ts web/package/README.md "$out/wasm/lfp.mjs" "$out/wasm/lfp.wasm" "$stage/"
node -e '
  const fs = require("fs");
  const file = process.argv[1];
  const pkg = JSON.parse(fs.readFileSync("web/package/package.json", "utf8"));
  pkg.version = process.argv[2];
  fs.writeFileSync(file, JSON.stringify(pkg, null, 2) + "\n");
' "$stage/package.json" "$version"
rm -f "$out"/lytfilterparser-*.tgz
(cd "$stage" && npm pack --silent --pack-destination "$out" >/dev/null)
echo "web: $out/lytfilterparser-$version.tgz"

[[ ${1:-} == --package-only ]] && exit 0

# The page: the npm packages of web/package-lock.json, then one bundle.
if [[ ! -d web/node_modules ]] || [[ web/package-lock.json -nt web/node_modules/.package-lock.json ]]; then
  (cd web && npm ci --no-audit --no-fund --loglevel=error)
fi
node web/editor/build.mjs "$stage" "$out/site"
echo "web: $out/site/index.html"

if [[ ${1:-} == --bench ]]; then
  if [[ ! -f $out/native/build.ninja ]]; then
    nice cmake -S web -B "$out/native" -G Ninja >/dev/null
  fi
  nice cmake --build "$out/native" --target lfp_native_times
  node web/bench/bench.mjs "$out/native/lfp_native_times" "$stage" "$out/site"
fi
