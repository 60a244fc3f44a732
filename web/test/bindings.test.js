// The two bindings give a request's model in the same shape with the same
// words: the package's toJSON() against the Python package's model() of the
// same texts, field by field (Python's data_type is dataType here; the
// Python classes stand for the package's kind fields).
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { existsSync, readFileSync } from 'node:fs';
import { dirname, join, resolve } from 'node:path';
import { test } from 'node:test';

import { packageDir, root } from './native.js';

const { load } = await import(join(packageDir, 'index.js'));
const lfp = await load();

// The folder that holds the built Python package lytfilterparser/ (the
// build tree's python/ folder).
function pythonDir() {
  const candidates = [process.env.LFP_PYTHON_DIR, 'build/dev/python', 'build/release/python'];
  for (const candidate of candidates) {
    if (candidate && existsSync(resolve(root, candidate, 'lytfilterparser', '_model.py'))) {
      return resolve(root, candidate);
    }
  }
  throw new Error('no built Python package: build the tree first or set LFP_PYTHON_DIR');
}

// The interpreter the extension is built for, and the environment it needs:
// a sanitized extension needs the sanitizer's runtime (and the C++ runtime,
// so that the runtime finds the __cxa_throw it intercepts) loaded first
// into the unsanitized interpreter, as the Python tests run it.
function python(dir) {
  const cacheFile = join(dirname(dir), 'CMakeCache.txt');
  const cache = existsSync(cacheFile) ? readFileSync(cacheFile, 'utf8') : '';
  const entry = (name) => cache.match(new RegExp(`^${name}:[A-Z]+=(.*)$`, 'm'))?.[1];
  const env = { ...process.env, PYTHONPATH: dir, PYTHONDONTWRITEBYTECODE: '1' };
  const sanitizer = (entry('CMAKE_CXX_FLAGS') ?? '').match(/-fsanitize=[^ ]*(address|thread)/)?.[1];
  if (sanitizer) {
    const compiler = entry('CMAKE_CXX_COMPILER');
    const runtime = (file) => execFileSync(compiler, [`-print-file-name=${file}`], { encoding: 'utf8' }).trim();
    env.LD_PRELOAD = [runtime(sanitizer === 'address' ? 'libasan.so' : 'libtsan.so'), runtime('libstdc++.so')].join(' ');
    if (sanitizer === 'address') env.ASAN_OPTIONS = 'detect_leaks=0:abort_on_error=1';
  }
  return { interpreter: entry('LFP_PYTHON_INTERPRETER') || 'python3', env };
}

// Reads texts as a JSON list on stdin, writes per text its model as plain
// data (each dataclass with its class under "@class", enum members as their
// words), {"error": message} where parse refuses it, or null.
const MODELS = `
import dataclasses, enum, json, sys
import lytfilterparser as lfp

def plain(value):
    if dataclasses.is_dataclass(value):
        fields = {f.name: plain(getattr(value, f.name)) for f in dataclasses.fields(value)}
        return {"@class": type(value).__name__, **fields}
    if isinstance(value, tuple):
        return [plain(item) for item in value]
    if isinstance(value, enum.Enum):
        return value.value
    return value

def model(text):
    try:
        request = lfp.parse(text)
    except lfp.RequestError as error:
        return {"error": error.message}
    return None if request is None else plain(request.model())

json.dump([model(text) for text in json.load(sys.stdin)], sys.stdout)
`;

function pythonModels(texts) {
  const dir = pythonDir();
  const { interpreter, env } = python(dir);
  return JSON.parse(execFileSync(interpreter, ['-c', MODELS], { input: JSON.stringify(texts), env, encoding: 'utf8' }));
}

const words = (kindName) => lfp.vocabulary().filter((w) => w.kindName === kindName);
const linkWord = words('vl request')[0].text;
const dataTypes = words('vl request').filter((w) => w.code >= 0).map((w) => w.text);

// The package's kind of each Python model class that has one.
const KINDS = {
  Compound: 'compound', ContentAtom: 'content', InterfaceAtom: 'interface', NetworkModel: 'network', E2EModel: linkWord,
};
const camel = (name) => name.replace(/_([a-z])/g, (_, letter) => letter.toUpperCase());

// Asserts that `web` is `py` field by field; adds every text compared to
// `seen` as "field:text".
function agree(py, web, path, seen, field = '') {
  if (Array.isArray(py)) {
    assert.ok(Array.isArray(web), path);
    assert.equal(web.length, py.length, path);
    py.forEach((item, i) => agree(item, web[i], `${path}[${i}]`, seen, field));
    return;
  }
  if (py !== null && typeof py === 'object') {
    assert.ok(web !== null && typeof web === 'object' && !Array.isArray(web), path);
    const { '@class': cls, ...fields } = py;
    const { kind, ...webFields } = web;
    assert.equal(kind, KINDS[cls], `${path}: the kind of a ${cls}`);
    assert.deepEqual(Object.keys(webFields).sort(), Object.keys(fields).map(camel).sort(), `${path}: ${cls}`);
    for (const [name, value] of Object.entries(fields)) {
      agree(value, web[camel(name)], `${path}.${camel(name)}`, seen, camel(name));
    }
    return;
  }
  assert.strictEqual(web, py, path);
  if (typeof py === 'string') seen.add(`${field}:${py}`);
}

test('toJSON() and the Python model agree on every option, direction and mode', () => {
  const options = words('column option').map((w) => w.text);
  const directions = words('interface direction').map((w) => w.text);
  const modes = words('accumulation mode').map((w) => w.text);
  const texts = [
    ...options.map((w) => `-k src ${w} -v wb`),
    ...directions.map((w) => `-f interface eth0${w} eth1 -k interface -v pkt`),
    '-f interface not eth0 eth1,in -k src -v wb',
    ...modes.map((w) => `-k src -v wb ${w}`),
    '-f and [ -f src not gw1<>10.0.0.1 gw2 -f or [ -f dst web1 -f svc http ] ] -k dst db1<>10.0.0.7 -v ab -s top',
    '-k src dir=in enc=yes comp=no cprint=yes url_mod=scheme -v wb acc=sum -s bottom index=1 updates=100',
    '-k src -v wb',
    ...dataTypes.map((w) => `${linkWord} link7 -t ${w}`),
  ];
  const models = pythonModels(texts);
  const seen = new Set();
  let compared = 0;
  texts.forEach((text, i) => {
    let web;
    try {
      web = lfp.parse(text).toJSON();
    } catch (error) {
      assert.deepEqual(models[i], { error: error.message }, text);
      return;
    }
    assert.ok(models[i] && !('error' in models[i]), `${text}: ${JSON.stringify(models[i])}`);
    agree(models[i], web, text, seen);
    compared += 1;
  });
  assert.ok(compared >= texts.length - modes.length, `${compared} of ${texts.length} compared`);
  const met = (word) => [...seen].some((entry) => entry.endsWith(`:${word}`));
  for (const word of [...options, ...directions, ...dataTypes]) assert.ok(met(word), `never compared: ${word}`);
  assert.ok(seen.has('direction:'), 'never compared: an interface item without a direction');
});
