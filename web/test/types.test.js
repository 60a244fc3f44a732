// The hand-written declarations (index.d.ts) against the module: tsc
// --strict takes the documented uses, and every method and property the
// declarations name is there at run time, and the other way round.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { test } from 'node:test';
import { fileURLToPath } from 'node:url';

import { packageDir } from './native.js';

const here = fileURLToPath(new URL('.', import.meta.url));
const tsc = join(here, '../node_modules/typescript/bin/tsc');
const declarations = readFileSync(join(packageDir, 'index.d.ts'), 'utf8');

test('tsc --strict takes the documented uses', () => {
  const dir = mkdtempSync(join(tmpdir(), 'lfp-types-'));
  try {
    const config = {
      compilerOptions: {
        strict: true, noEmit: true, module: 'nodenext', moduleResolution: 'nodenext', target: 'es2022',
        lib: ['es2022', 'esnext.disposable', 'dom'], types: [], skipLibCheck: false,
        paths: { lytfilterparser: [join(packageDir, 'index.d.ts')] },
      },
      files: [join(here, 'types/usage.ts')],
    };
    writeFileSync(join(dir, 'tsconfig.json'), JSON.stringify(config));
    execFileSync(process.execPath, [tsc, '-p', join(dir, 'tsconfig.json')], { encoding: 'utf8' });
  } catch (error) {
    assert.fail(error.stdout || String(error));
  } finally {
    rmSync(dir, { recursive: true, force: true });
  }
});

// The members a declared class or interface names.
function declared(name) {
  const start = declarations.search(new RegExp(`(class|interface) ${name}\\b`));
  assert.ok(start >= 0, name);
  const body = declarations.slice(declarations.indexOf('{', start) + 1);
  const end = body.search(/^}/m);
  const members = new Set();
  for (const line of body.slice(0, end).split('\n')) {
    const match = /^  (?:readonly )?([A-Za-z_]\w*)\??[(:<]/.exec(line);
    if (match && match[1] !== 'constructor') members.add(match[1]);
  }
  return members;
}

function ownMethods(prototype) {
  return Object.getOwnPropertyNames(prototype).filter((n) => n !== 'constructor' && !n.startsWith('_'));
}

test('every declared member is there, and every public one is declared', async () => {
  const pkg = await import(join(packageDir, 'index.js'));
  const lfp = await pkg.load();
  assert.deepEqual(new Set(Object.keys(pkg)), new Set(['load', 'default', 'RequestError', 'NetworkRequest', 'E2ERequest', 'MAX_TEXT_LENGTH']));
  const library = declared('LytFilterParser');
  const runtime = new Set([...Object.keys(lfp).filter((k) => !k.startsWith('_')), ...ownMethods(Object.getPrototypeOf(lfp))]);
  assert.deepEqual(runtime, library);
  const base = declared('Request');
  const request = Object.getPrototypeOf(pkg.NetworkRequest.prototype);
  assert.deepEqual(new Set(ownMethods(request)), base);
  // Subclasses redeclare toJSON only to narrow its type.
  const added = (name) => new Set([...declared(name)].filter((member) => !base.has(member)));
  assert.deepEqual(new Set(ownMethods(pkg.NetworkRequest.prototype)), added('NetworkRequest'));
  assert.deepEqual(new Set(ownMethods(pkg.E2ERequest.prototype)), added('E2ERequest'));
  const error = new pkg.RequestError('m', 1, 2, ['x']);
  for (const member of declared('RequestError')) assert.ok(member in error, member);
});

test('the model and diagnostic shapes are the declared ones', async () => {
  const { load } = await import(join(packageDir, 'index.js'));
  const lfp = await load();
  const model = lfp.parse('-f and [ -f interface eth0 -f src a ] -k src -v wb').toJSON();
  assert.deepEqual(new Set(Object.keys(model)), declared('NetworkModel'));
  assert.deepEqual(new Set(Object.keys(model.filter)), declared('CompoundModel'));
  assert.deepEqual(new Set(Object.keys(model.filter.children[0])), declared('InterfaceModel'));
  assert.deepEqual(new Set(Object.keys(model.filter.children[1])), declared('ContentModel'));
  assert.deepEqual(new Set(Object.keys(model.keys[0])), declared('ColumnModel'));
  assert.deepEqual(new Set(Object.keys(model.filter.children[1].names[0])), declared('Name'));
  assert.deepEqual(new Set(Object.keys(lfp.parse('vl a').toJSON())), declared('E2EModel'));
  assert.deepEqual(new Set(Object.keys(lfp.lint('-f src a -f or -k svc -v wb')[0])), declared('Diagnostic'));
  assert.deepEqual(new Set(Object.keys(lfp.diagnosticCodes()[0])), declared('DiagnosticCode'));
  assert.deepEqual(new Set(Object.keys(lfp.vocabulary()[0])), declared('Word'));
  assert.deepEqual(new Set(Object.keys(lfp.convertWithDiagnostics('-g topsrc -y b'))), declared('Conversion'));
});
