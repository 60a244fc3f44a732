// Agreement with the native library on generated inputs (the generator of
// scripts/compare): for every input that is valid UTF-8, as a JavaScript
// string must be, the package and lytreq give the same written requests,
// refusals, diagnostic codes and places (bytes turned into code units),
// verdicts per peer and conversions.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { join } from 'node:path';
import { test } from 'node:test';

import { attempt, diagnosticsInUnits, lytreqBatch, packageDir, parseWarnings, root, unitsOf } from './native.js';

const { load, RequestError } = await import(join(packageDir, 'index.js'));
const lfp = await load();

const COUNT = Number(process.env.LFP_AGREEMENT_COUNT ?? 24000);
const SEED = Number(process.env.LFP_AGREEMENT_SEED ?? 20261124);

// The generator's escapes undone: the bytes of each text.
function unescape(line) {
  const bytes = [];
  const data = Buffer.from(line, 'latin1');
  for (let i = 0; i < data.length; ++i) {
    if (data[i] !== 0x5c) {
      bytes.push(data[i]);
      continue;
    }
    const next = String.fromCharCode(data[++i]);
    if (next === 'x') {
      bytes.push(parseInt(data.subarray(i + 1, i + 3).toString('latin1'), 16));
      i += 2;
    } else {
      bytes.push({ '\\': 0x5c, t: 0x09, n: 0x0a, r: 0x0d }[next]);
    }
  }
  return Buffer.from(bytes);
}

// The texts of each kind that the tool reads as one line as they are.
function inputs() {
  const generated = execFileSync('python3', [join(root, 'scripts/compare/generate.py'), '--count', String(COUNT), '--seed', String(SEED)],
    { maxBuffer: 1 << 30 }).toString('latin1');
  const decoder = new TextDecoder('utf-8', { fatal: true, ignoreBOM: true });
  const kinds = { R: [], L: [] };
  let skipped = 0;
  for (const line of generated.split('\n')) {
    if (line === '') continue;
    const bytes = unescape(line.slice(2));
    let text;
    try {
      text = decoder.decode(bytes);
    } catch {
      ++skipped;  // not UTF-8: no JavaScript string has these bytes
      continue;
    }
    // Line ends, a leading byte order mark and lines the batch input skips
    // (blank, "#") do not reach the library through the tool as they are.
    const first = text.replace(/^[ \t]+/, '')[0];
    if (/[\n\r]/.test(text) || text.startsWith('\uFEFF') || first === undefined || first === '#') {
      ++skipped;
      continue;
    }
    kinds[line[0]].push(text);
  }
  return { ...kinds, skipped };
}

function fault(error) {
  assert.ok(error instanceof RequestError, String(error));
  return { error: error.message, start: error.start, length: error.length, suggestions: error.suggestions };
}

function expectedFault(text, record, message = record.error) {
  const place = record.errorStart === undefined ? { start: null, length: null } : unitsOf(text, record.errorStart, record.errorLength);
  return { error: message, ...place, suggestions: record.suggestions ?? [] };
}

const { R, L, skipped } = inputs();

test(`at least 20,000 generated inputs agree with the native library (${R.length} requests, ${L.length} legacy lines, ${skipped} left out)`, () => {
  assert.ok(R.length + L.length >= 20000, `${R.length + L.length} inputs`);
  const parsed = lytreqBatch('parse', R);
  const checked = lytreqBatch('check', R, ['--peer', 'all']);
  let requests = 0;
  R.forEach((text, i) => {
    const record = parsed[i];
    const got = attempt(() => lfp.parse(text));
    const request = got.error ? null : got.value;
    const dump = request === null ? { error: got.error } : attempt(() => request.dump());
    assert.deepEqual(parseWarnings(lfp, text, dump.error ? null : request), diagnosticsInUnits(text, record.warnings), text);
    if (got.error) {
      assert.deepEqual(fault(got.error), expectedFault(text, record), text);
      return;
    }
    if (record.error !== undefined) {
      // Read, but the library cannot write it.
      assert.equal(dump.error?.message, record.error, text);
    } else {
      assert.equal(dump.value, record.request, text);
    }
    const verdicts = checked[i];
    if (verdicts?.peers !== undefined) {
      assert.equal(request.minimalPeer(), verdicts.minimalPeer, text);
      for (const verdict of verdicts.peers) {
        const where = `${text} peer ${verdict.peer}`;
        const copy = lfp.parse(text);
        const refused = attempt(() => copy.validate(verdict.peer));
        if (refused.error) {
          assert.equal(verdict.valid, false, where);
          const got = fault(refused.error);
          const want = expectedFault(text, verdict, verdict.message);
          assert.deepEqual([got.error, got.start, got.length], [want.error, want.start, want.length], where);
        } else if (!verdict.valid) {
          // The library serves it, but the peer has no text for it.
          assert.ok(copy.fidelity(verdict.peer).some((d) => d.message === verdict.message), where);
        } else {
          // What the text for the peer loses; nothing where the library cannot write that text.
          const losses = attempt(() => copy.fidelity(verdict.peer));
          assert.deepEqual(losses.value ?? [], diagnosticsInUnits(text, verdict.warnings), where);
        }
        copy.free();
        const fresh = lfp.parse(text);
        const answer = attempt(() => fresh.check(verdict.peer));
        assert.equal(answer.value?.valid ?? false, !refused.error, where);
        fresh.free();
      }
    }
    request.free();
    ++requests;
  });
  assert.ok(requests > 1000, `${requests} requests read`);

  const converted = lytreqBatch('convert', L);
  L.forEach((text, i) => {
    const record = converted[i];
    const got = attempt(() => lfp.convert(text));
    const detailed = lfp.convertWithDiagnostics(text);
    if (record.error !== undefined) {
      assert.deepEqual(fault(got.error), expectedFault(text, record), text);
      assert.equal(detailed.refusal?.message, record.error, text);
    } else {
      assert.equal(got.value, record.request, text);
      assert.deepEqual(detailed.diagnostics, diagnosticsInUnits(text, record.warnings), text);
    }
  });
});
