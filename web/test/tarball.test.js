// The packed tarball as a user gets it: installed into a scratch project
// with npm and imported from Node by its name.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { mkdtempSync, readdirSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { test } from 'node:test';

import { lytreqBatch, lytreqPath, root } from './native.js';

const out = join(root, 'build/web');

test('the tarball installs into a scratch project and imports by name', () => {
  const tarballs = readdirSync(out).filter((f) => /^lytfilterparser-.*\.tgz$/.test(f));
  assert.equal(tarballs.length, 1, 'scripts/web.sh leaves one tarball in build/web');
  const listing = execFileSync('tar', ['-tzf', join(out, tarballs[0])], { encoding: 'utf8' }).trim().split('\n').sort();
  assert.deepEqual(listing, ['package/README.md', 'package/index.d.ts', 'package/index.js', 'package/lfp.mjs',
    'package/lfp.wasm', 'package/package.json']);
  const dir = mkdtempSync(join(tmpdir(), 'lfp-scratch-'));
  try {
    writeFileSync(join(dir, 'package.json'), JSON.stringify({ name: 'scratch', private: true, type: 'module' }));
    execFileSync('npm', ['install', '--offline', '--no-audit', '--no-fund', '--loglevel=error', join(out, tarballs[0])],
      { cwd: dir, stdio: 'pipe' });
    writeFileSync(join(dir, 'main.js'), [
      "import load, { RequestError } from 'lytfilterparser';",
      'const lfp = await load();',
      "const request = lfp.parse('-f src 10.0.0.1 -k svc -v wb acc=rate -s top');",
      "let refused = '';",
      "try { lfp.parse('-k Src -v wb'); } catch (e) { if (e instanceof RequestError) refused = e.message + ' ' + e.start; }",
      'console.log(JSON.stringify([lfp.version, request.dump(), refused]));',
    ].join('\n'));
    const printed = JSON.parse(execFileSync(process.execPath, ['main.js'], { cwd: dir, encoding: 'utf8' }));
    const version = execFileSync(lytreqPath(), ['--version'],
      { encoding: 'utf8' });
    assert.ok(version.includes(printed[0]), `${version} holds ${printed[0]}`);
    assert.equal(printed[1], lytreqBatch('parse', ['-f src 10.0.0.1 -k svc -v wb acc=rate -s top'])[0].request);
    assert.equal(printed[2], 'Invalid type: Src 3');
  } finally {
    rmSync(dir, { recursive: true, force: true });
  }
});
