// Bad input: huge texts, deep nesting, lone surrogates, and a million calls
// in a row; the module answers and keeps working, and what the package
// holds of its memory does not grow.
import assert from 'node:assert/strict';
import { join } from 'node:path';
import { test } from 'node:test';

import { attempt, lytreqBatch, packageDir } from './native.js';

const { load, RequestError, MAX_TEXT_LENGTH } = await import(join(packageDir, 'index.js'));
const lfp = await load();

function stillWorks() {
  assert.equal(lfp.parse('-k src -v wb').dump(), ' -k src acc=replace -v wb acc=rate ');
}

// The package's and the tool's answer for one text must be the same.
function agrees(text) {
  const record = lytreqBatch('parse', [text])[0];
  const got = attempt(() => lfp.parse(text)?.dump());
  if (record.error !== undefined) {
    assert.ok(got.error instanceof RequestError, String(got.error));
    assert.equal(got.error.message, record.error);
  } else {
    assert.equal(got.error, undefined, String(got.error));
    assert.equal(got.value, record.request);
  }
}

test('a 16 MiB request is read, written and linted', () => {
  const count = (16 * 1024 * 1024) / 64;
  const names = Array.from({ length: count }, (_, i) => String(i).padStart(63, 'n')).join(' ');
  const text = `-f src ${names} -k src -v wb`;
  assert.ok(text.length > 16 * 1024 * 1024);
  const request = lfp.parse(text);
  assert.ok(request.dump().startsWith(`-f src  ${'n'.repeat(62)}0 `));
  assert.equal(request.toJSON().filter.children[0].names.length, count);
  request.free();
  assert.deepEqual(lfp.lint(text), []);
  stillWorks();
});

test('a text above the limit is refused before it reaches the module', () => {
  const text = 'a'.repeat(MAX_TEXT_LENGTH + 1);
  for (const call of [() => lfp.parse(text), () => lfp.lint(text), () => lfp.convert(text), () => lfp.tokenize(text)]) {
    assert.throws(call, (error) => error instanceof RequestError && /longer than/.test(error.message));
  }
  assert.ok(MAX_TEXT_LENGTH >= 16 * 1024 * 1024);
  stillWorks();
});

test('a 1,000,000-deep request gets the native answer', () => {
  const depth = 1_000_000;
  const text = '-f and [ '.repeat(depth) + '-f src a' + ' ]'.repeat(depth) + ' -k src -v wb';
  agrees(text);
  assert.ok(Array.isArray(lfp.lint(text)));
  const brackets = '['.repeat(depth) + ' -k src -v wb';
  agrees(brackets);
  stillWorks();
});

test('lone surrogates read as U+FFFD and keep places in code units', () => {
  for (const text of ['\uD800 -k src -v wb', '-k src -v wb \uDC00', '-k \uD83D src -v wb', '-k Src\uDFFF -v wb']) {
    const replaced = text.replace(/[\uD800-\uDFFF]/g, '\uFFFD');
    const a = attempt(() => lfp.parse(text)?.dump());
    const b = attempt(() => lfp.parse(replaced)?.dump());
    assert.equal(a.value, b.value);
    assert.equal(a.error?.message, b.error?.message);
    assert.equal(a.error?.start, b.error?.start);
    assert.deepEqual(lfp.lint(text), lfp.lint(replaced));
  }
  assert.throws(() => lfp.parse('-k \uD83D -v wb'), (e) => e instanceof RequestError && e.start === 3 && e.length === 1);
  stillWorks();
});

test('texts that are not strings are a TypeError', () => {
  for (const value of [undefined, null, 42, {}, ['-k src']]) {
    assert.throws(() => lfp.parse(value), TypeError);
    assert.throws(() => lfp.lint(value), TypeError);
  }
  stillWorks();
});

test('1,000,000 calls in a row leave the module working and its memory as it was', () => {
  const texts = ['-f src 10.0.0.1 -k svc -v wb acc=rate -s top', '-k Src -v wb', 'vl link7', '-f or -f src a -k svc -v wb'];
  const round = (n) => {
    let calls = 0;
    for (let i = 0; calls < n; ++i) {
      const text = texts[i % texts.length];
      let request = null;
      try {
        request = lfp.parse(text);
        request.dump();
        calls += 2;
      } catch (error) {
        assert.ok(error instanceof RequestError);
        calls += 1;
      } finally {
        request?.free();
      }
      lfp.lint(text);
      calls += 1;
    }
  };
  round(50_000);
  const before = lfp.memoryBytes;
  round(1_000_000);
  // A leak of a few bytes a call would have grown the memory by megabytes.
  assert.equal(lfp.memoryBytes, before);
  stillWorks();
});
