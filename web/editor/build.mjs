// Builds the editor page into plain static files: node build.mjs PACKAGE SITE
// PACKAGE is the staged npm package (scripts/web.sh), SITE the output folder.
import { build } from 'esbuild';
import { copyFileSync, mkdirSync, rmSync } from 'node:fs';
import { dirname, join, resolve } from 'node:path';
import { fileURLToPath } from 'node:url';

const here = dirname(fileURLToPath(import.meta.url));
const [packageDir, site] = process.argv.slice(2).map((p) => resolve(p));
if (!packageDir || !site) throw new Error('usage: node build.mjs PACKAGE SITE');

rmSync(site, { recursive: true, force: true });
mkdirSync(site, { recursive: true });
await build({
  entryPoints: [join(here, 'main.js')],
  bundle: true,
  format: 'esm',
  target: 'es2022',
  minify: true,
  legalComments: 'none',
  outfile: join(site, 'app.js'),
  alias: { lytfilterparser: join(packageDir, 'index.js') },
  logLevel: 'warning',
});
// The module fetches its .wasm from beside the script that holds it.
copyFileSync(join(packageDir, 'lfp.wasm'), join(site, 'lfp.wasm'));
copyFileSync(join(here, 'index.html'), join(site, 'index.html'));
copyFileSync(join(here, 'style.css'), join(site, 'style.css'));
