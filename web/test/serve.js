// A static file server for the built site on 127.0.0.1 (a free port), for
// the browser test and scripts/editor.sh. It closes itself after
// `lifetimeMs` if nobody closes it first.
import { createReadStream, statSync } from 'node:fs';
import { createServer } from 'node:http';
import { extname, join, normalize, resolve } from 'node:path';

const TYPES = {
  '.html': 'text/html; charset=utf-8', '.js': 'text/javascript; charset=utf-8', '.css': 'text/css; charset=utf-8',
  '.wasm': 'application/wasm', '.png': 'image/png',
};

export function serve(site, { port = 0, lifetimeMs = 120_000 } = {}) {
  const root = resolve(site);
  const server = createServer((request, response) => {
    const path = normalize(decodeURIComponent(new URL(request.url, 'http://127.0.0.1').pathname));
    const file = join(root, path.endsWith('/') ? `${path}index.html` : path);
    let ok = file.startsWith(root);
    try {
      ok = ok && statSync(file).isFile();
    } catch {
      ok = false;
    }
    if (!ok) {
      response.writeHead(404).end('not found');
      return;
    }
    response.writeHead(200, { 'content-type': TYPES[extname(file)] ?? 'application/octet-stream', 'cache-control': 'no-store' });
    createReadStream(file).pipe(response);
  });
  return new Promise((done, fail) => {
    server.once('error', fail);
    server.listen(port, '127.0.0.1', () => {
      const timer = setTimeout(() => server.close(), lifetimeMs);
      timer.unref();
      server.on('close', () => clearTimeout(timer));
      done({ url: `http://127.0.0.1:${server.address().port}/`, close: () => new Promise((r) => { server.closeAllConnections(); server.close(r); }) });
    });
  });
}

// node serve.js SITE [PORT] [SECONDS]: serves until stopped or SECONDS pass.
if (process.argv[1] && resolve(process.argv[1]) === resolve(new URL(import.meta.url).pathname)) {
  const [site, port = '0', seconds = '3600'] = process.argv.slice(2);
  const { url } = await serve(site, { port: Number(port), lifetimeMs: Number(seconds) * 1000 });
  console.log(`serving ${site} at ${url} for ${seconds} s (Ctrl-C stops it)`);
}
