// The JavaScript API against the native library, case by case: every answer
// of the package is compared with what lytreq (the same library, native)
// gives for the same text.
import assert from 'node:assert/strict';
import { join } from 'node:path';
import { test } from 'node:test';

import { attempt, diagnosticsInUnits, lytreqBatch, packageDir, unitsOf } from './native.js';

const { load, RequestError, NetworkRequest, E2ERequest } = await import(join(packageDir, 'index.js'));
const lfp = await load();

const REQUESTS = [
  '-f src 10.0.0.1 -k svc -v wb acc=rate -s top',
  '-k src -v wb',
  '-k src -k svc -v conn acc=new',
  '-k src -v wb -v pkt',
  '-k url -v wb',
  '-k url -v session',
  '-f interface eth0 -k src -v wb',
  '-f interface eth0,in eth1,out -k interface -v pkt dir=in',
  '-f and [ -f src not gw1 gw2 -f or [ -f dst web1 -f svc http ] ] -k dst -v ab sort=bottom',
  '-f or -f src a -k svc -v wb',
  '-f src a -f or -k svc -v wb',
  '-k src dir=in enc=yes comp=no cprint=yes -v wb acc=sum -s bottom index=1 updates=100',
  '-k url url_mod=host -v session acc=concurrent',
  '-k telNumber -v wb',
  '-k Src -v wb',
  '-k src -v wbx',
  '-f src',
  '-f [ src a',
  '-k src -v wb -s top index=7',
  '-k src -v wb -s top updates=500',
  'vl link7',
  'vl link7 -t application',
  'vl',
  '-f src é 10.0.0.1 -k svc -v wb',
  '-f src 😀 -k Srć -v wb',
  '-f src 😀😀 ünï -k svc -v 😀',
  '-k src\t-v wb',
  '-f src gw1<>10.0.0.1 -k dst -v wb',
  '-k src -v wb -v pkt -v conn acc=new -v ab',
  '-k orientation -v wb acc=lineUtil',
];

const LEGACY = [
  '-g topsrc -y b',
  '-g topsrc -y c src 1 [ 10.0.0.1 ]',
  '-filter [ and [[src 1 [10.0.0.1 ]]]] -a a -y c -g topdst',
  '-g topsrc -y x',
  '-g nosuch',
  '-g topsvc -y p -a i',
  '-y b -g topsrc 😀',
];

const parsed = lytreqBatch('parse', REQUESTS);

function assertFault(error, record, text) {
  assert.ok(error instanceof RequestError, `${text}: ${error}`);
  assert.ok(error instanceof Error);
  assert.equal(error.message, record.error ?? record.message);
  const start = record.errorStart ?? null;
  if (start === null) {
    assert.equal(error.start, null);
  } else {
    assert.deepEqual({ start: error.start, length: error.length }, unitsOf(text, start, record.errorLength));
    assert.equal(text.slice(error.start, error.start + error.length).length, error.length);
  }
  if (record.suggestions) assert.deepEqual(error.suggestions, record.suggestions);
}

test('parse: the written request, or the refusal with its place and suggestions', () => {
  REQUESTS.forEach((text, i) => {
    const record = parsed[i];
    const got = attempt(() => lfp.parse(text));
    if (record.error !== undefined) {
      assertFault(got.error ?? attempt(() => got.value.dump()).error, record, text);
    } else {
      assert.equal(got.error, undefined, `${text}: ${got.error}`);
      assert.equal(got.value.dump(), record.request, text);
      assert.ok(got.value instanceof (text.startsWith('vl') ? E2ERequest : NetworkRequest));
      got.value.free();
    }
  });
});

test('dump(peer): the text for each peer that accepts the request', () => {
  for (const peer of [1, 2, 3]) {
    const records = lytreqBatch('parse', REQUESTS, ['--peer', String(peer)]);
    REQUESTS.forEach((text, i) => {
      if (records[i].request === undefined || parsed[i].error !== undefined) return;
      const request = lfp.parse(text);
      if (request instanceof NetworkRequest) assert.equal(request.check(peer).valid, true, text);
      assert.equal(request.dump(peer), records[i].request, `${text} for peer ${peer}`);
      request.free();
    });
  }
});

test('columns and their catalogue names', () => {
  for (const peer of [1, 2, 3]) {
    const records = lytreqBatch('columns', REQUESTS, ['--peer', String(peer)]);
    REQUESTS.forEach((text, i) => {
      if (!records[i] || records[i].columns === undefined) return;
      const request = lfp.parse(text);
      const numbers = request.columns(peer);
      assert.deepEqual(numbers, records[i].columns.map((c) => c.number), text);
      assert.deepEqual(numbers.map((n) => lfp.columnName(n)), records[i].columns.map((c) => c.name), text);
      request.free();
    });
  }
});

test('moduleNames', () => {
  const records = lytreqBatch('names', REQUESTS);
  REQUESTS.forEach((text, i) => {
    if (!records[i] || records[i].names === undefined) return;
    assert.deepEqual(lfp.parse(text).moduleNames(), records[i].names, text);
  });
});

test('toJSON: every word of the model is a word of the vocabulary', () => {
  const words = new Set(lfp.vocabulary().map((w) => w.text));
  const model = lfp.parse('-f and [ -f interface eth0,in eth1 -f src not a -f or [ -f dst b ] ] -k src dir=in -v wb -s top').toJSON();
  const filter = model.filter;
  assert.ok(words.has(filter.operator));
  const [iface, content, inner] = filter.children;
  assert.deepEqual(iface.interfaces.map((x) => x.name), ['eth0', 'eth1']);
  assert.ok(words.has(iface.interfaces[0].direction));
  assert.equal(iface.interfaces[1].direction, '');
  assert.deepEqual({ kind: content.kind, negated: content.negated, names: content.names },
    { kind: 'content', negated: true, names: [{ name: 'a', resolved: '' }] });
  assert.ok(words.has(content.type));
  assert.equal(inner.kind, 'compound');
  assert.ok(words.has(inner.operator));
  for (const column of [...model.keys, ...model.values]) {
    for (const word of [column.type, column.mode, ...Object.values(column.options)]) assert.ok(words.has(word), word);
  }
  assert.ok(words.has(model.sort.type));
  assert.deepEqual(lfp.parse('-k src -v wb').toJSON().filter.children, []);
});

test('convert and convertWithDiagnostics for legacy peers', () => {
  for (const peer of [1, 2]) {
    const records = lytreqBatch('convert', LEGACY, ['--peer', String(peer)]);
    LEGACY.forEach((text, i) => {
      const record = records[i];
      const got = attempt(() => lfp.convert(text, peer));
      const detailed = lfp.convertWithDiagnostics(text, peer);
      if (record.error !== undefined) {
        assertFault(got.error, record, text);
        assert.equal(detailed.refusal.message, record.error);
      } else {
        assert.equal(got.value, record.request, text);
        assert.equal(detailed.request, record.request);
        assert.equal(detailed.refusal, null);
        assert.deepEqual(detailed.diagnostics, diagnosticsInUnits(text, record.warnings), text);
      }
    });
  }
  assert.equal(lfp.convert(LEGACY[0]), lytreqBatch('convert', [LEGACY[0]])[0].request);
});

test('resolve: names from a Map or an object; a missing or uncarriable name is refused', () => {
  const request = lfp.parse('-f src gw1 gw2 -k svc -v wb');
  request.resolve(new Map([['gw1', '10.0.0.1'], ['gw2', '10.0.0.2']]));
  assert.deepEqual(request.toJSON().filter.children[0].names,
    [{ name: 'gw1', resolved: '10.0.0.1' }, { name: 'gw2', resolved: '10.0.0.2' }]);
  assert.equal(lfp.parse(request.dump()).dump(), request.dump());
  assert.throws(() => lfp.parse('-f src gw1 -k svc -v wb').resolve({}), { name: 'RequestError', message: 'no resolved name in the map for: gw1' });
  for (const bad of ['a b', 'a]', '[a', 'a\0b']) {
    assert.throws(() => lfp.parse('-f src gw1 -k svc -v wb').resolve({ gw1: bad }), RequestError, JSON.stringify(bad));
  }
});

test('peers outside those the tool serves throw RangeError', () => {
  const network = lfp.parse('-k src -v wb');
  const rows = [
    [() => network.dump(0)], [() => network.dump(4)], [() => network.dump(1.5)], [() => network.dump('1')],
    [() => network.check(-1)], [() => network.check(4)], [() => network.validate(4)],
    [() => network.columns(0)], [() => network.columns(4)], [() => network.fidelity(0)], [() => network.fidelity(4)],
    [() => lfp.convert('-g topsrc -y b', 0)], [() => lfp.convert('-g topsrc -y b', 3)],
    [() => lfp.convertWithDiagnostics('-g topsrc -y b', 3)],
  ];
  for (const [call] of rows) assert.throws(call, RangeError, String(call));
  assert.equal(network.check(0).valid, lytreqBatch('check', ['-k src -v wb'], ['--peer', '0'])[0].valid);
});

test('tokenize cuts at blanks and brackets', () => {
  assert.deepEqual(lfp.tokenize('-f [ src a]'), ['-f', '[', 'src', 'a', ']']);
  assert.deepEqual(lfp.tokenize('   '), []);
});

test('empty text, version, vocabulary and codes', () => {
  assert.equal(lfp.parse(''), null);
  assert.equal(lfp.parse('    '), null);
  assert.match(lfp.version, /^\d+\.\d+\.\d+$/);
  assert.ok(lfp.vocabulary().length > 50);
  assert.ok(lfp.vocabulary().every((w) => w.peers.every((p) => p >= 1 && p <= 3)));
  assert.ok(lfp.diagnosticCodes().some((c) => c.code === 'operator-ignored'));
});

test('load gives the same library every time', async () => {
  assert.equal(await load(), lfp);
});

test('a freed request says so; free twice is harmless', () => {
  const request = lfp.parse('-k src -v wb');
  request.free();
  request.free();
  assert.throws(() => request.dump(), /freed/);
  const scoped = lfp.parse('-k src -v wb');
  scoped[Symbol.dispose ?? Symbol.for('nodejs.dispose')]();
  assert.throws(() => scoped.dump(), /freed/);
});

test('the examples of docs/web.md give what it says', () => {
  const request = lfp.parse('-f src 10.0.0.1 -k svc -v conn');
  assert.equal(request.dump(), '-f src  10.0.0.1    -k svc acc=replace -v conn acc=rate ');
  assert.deepEqual(request.check(1), { valid: true, message: '' });
  assert.equal(request.minimalPeer(), 1);
  assert.deepEqual(request.moduleNames(), ['10.0.0.1']);
  assert.deepEqual(JSON.parse(JSON.stringify(request)), request.toJSON());
  const error = attempt(() => lfp.parse('-k src -v wb acc=rates')).error;
  assert.deepEqual([error.message, error.start, error.length, error.suggestions],
    ['Invalid accumulation mode: acc=rates', 13, 9, ['acc=rate']]);
  const [finding] = lfp.lint('-f src a -f or -k svc -v wb');
  assert.deepEqual([finding.code, finding.severity, finding.start, finding.length], ['operator-ignored', 'warning', 9, 5]);
  assert.equal(lfp.maxTextLength, 33554432);
  const model = lfp.parse('-f interface eth0,in -k svc -v conn').toJSON();
  assert.deepEqual(model.filter.children[0].interfaces, [{ name: 'eth0', direction: ',in' }]);
  assert.deepEqual(model.sort, { type: 'none', index: 1, updates: 50 });
  assert.deepEqual(lfp.parse('vl link7 -t application').toJSON(), { kind: 'vl', link: 'link7', dataType: 'application' });
});
