// Builds the editor page into plain static files: node build.mjs PACKAGE SITE
// PACKAGE is the staged npm package (scripts/web.sh), SITE the output folder.
import { build } from 'esbuild';
import { copyFileSync, mkdirSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { basename, dirname, join, resolve } from 'node:path';
import { fileURLToPath } from 'node:url';

const here = dirname(fileURLToPath(import.meta.url));
const [packageDir, site] = process.argv.slice(2).map((p) => resolve(p));
if (!packageDir || !site) throw new Error('usage: node build.mjs PACKAGE SITE');

rmSync(site, { recursive: true, force: true });
mkdirSync(site, { recursive: true });
// Two entry points sharing the package's code: start.js only loads the
// library, app.js is the editor.
const built = await build({
  entryPoints: { start: join(here, 'start.js'), app: join(here, 'main.js') },
  bundle: true,
  splitting: true,
  chunkNames: 'lfp-[hash]',
  format: 'esm',
  target: 'es2022',
  minify: true,
  legalComments: 'none',
  outdir: site,
  alias: { lytfilterparser: join(packageDir, 'index.js') },
  logLevel: 'warning',
  metafile: true,
});
// The module fetches its .wasm from beside the script that holds it (the
// shared chunk, in the same folder).
copyFileSync(join(packageDir, 'lfp.wasm'), join(site, 'lfp.wasm'));
// The page names the shared chunk, so that the browser fetches it at once
// rather than after start.js.
const chunks = Object.keys(built.metafile.outputs).map((p) => basename(p)).filter((f) => /^lfp-.*\.js$/.test(f));
const preloads = chunks.map((f) => `<link rel="modulepreload" href="${f}">`).join('\n');
const page = readFileSync(join(here, 'index.html'), 'utf8').replace('<!-- chunks -->', preloads);
writeFileSync(join(site, 'index.html'), page);
copyFileSync(join(here, 'style.css'), join(site, 'style.css'));
