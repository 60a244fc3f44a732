#!/usr/bin/env bash
# Builds the Debian package from a build tree and checks what it holds.
# Usage: scripts/package.sh <build-dir>
set -euo pipefail
build=$(cd "$1" && pwd)
(cd "$build" && cpack -G DEB >/dev/null)
deb=$(ls -t "$build"/*.deb | head -1)
contents=$(dpkg-deb --contents "$deb")
for expected in ./usr/lib/x86_64-linux-gnu/liblytFilterParser.so.5 ./usr/include/lytFilterParser/lytFilterParser.h \
    ./usr/include/lytFilterParser/request/NetworkKovaRequest.h ./usr/lib/x86_64-linux-gnu/pkgconfig/lytFilterParser.pc \
    ./usr/lib/x86_64-linux-gnu/cmake/lytFilterParser/lytFilterParserConfig.cmake ./usr/bin/lytreq \
    ./usr/share/man/man1/lytreq.1 ./usr/share/man/man7/lytreq-syntax.7 \
    ./usr/share/bash-completion/completions/lytreq ./usr/share/zsh/site-functions/_lytreq \
    ./usr/lib/python3/dist-packages/lytfilterparser/__init__.py ./usr/lib/python3/dist-packages/lytfilterparser/py.typed; do
  alt=${expected/x86_64-linux-gnu\//}
  if ! grep -qF -- " $expected" <<<"$contents" && ! grep -qF -- " $alt" <<<"$contents"; then
    echo "package: $expected missing from $deb" >&2
    exit 1
  fi
done
if ! grep -qE ' \./usr/lib/python3/dist-packages/lytfilterparser/_lytfilterparser\..+\.so$' <<<"$contents"; then
  echo "package: the Python extension _lytfilterparser missing from $deb" >&2
  exit 1
fi
echo "package: $(basename "$deb") holds the library, headers, CMake package, pkg-config file, lytreq, its man pages and completion, the Python package"
