// The native library's answers, through its command-line tool: the tests
// compare the package with them rather than re-typing expected outputs.
import { execFileSync } from 'node:child_process';
import { existsSync, mkdtempSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { dirname, join, resolve } from 'node:path';
import { fileURLToPath } from 'node:url';

export const root = resolve(dirname(fileURLToPath(import.meta.url)), '../..');

// The package as scripts/web.sh stages it.
export const packageDir = process.env.LFP_WEB_PACKAGE ?? join(root, 'build/web/package');

export function lytreqPath() {
  const candidates = [process.env.LFP_LYTREQ, 'build/dev/tools/lytreq', 'build/release/tools/lytreq', 'build/native/tools/lytreq'];
  for (const candidate of candidates) {
    if (candidate && existsSync(resolve(root, candidate))) return resolve(root, candidate);
  }
  throw new Error('no native lytreq: build the tree first or set LFP_LYTREQ');
}

// Runs `lytreq SUBCOMMAND --json ARGS --file F` over `texts`, one per line;
// the records by text index. A text the tool skips (blank) has none.
export function lytreqBatch(subcommand, texts, args = []) {
  const dir = mkdtempSync(join(tmpdir(), 'lfp-web-'));
  try {
    const file = join(dir, 'requests.txt');
    writeFileSync(file, texts.join('\n') + '\n');
    let stdout;
    try {
      stdout = execFileSync(lytreqPath(), [subcommand, '--json', ...args, '--file', file], {
        maxBuffer: 1 << 30,
        encoding: 'utf8',
        stdio: ['ignore', 'pipe', 'pipe'],  // the tool's messages on stderr repeat the records
      });
    } catch (error) {
      if (error.status !== 1) throw error;  // 1: the library refused some request
      stdout = error.stdout;
    }
    const records = new Array(texts.length).fill(null);
    for (const line of stdout.split('\n')) {
      if (line === '') continue;
      const record = JSON.parse(line);
      records[(record.line ?? 1) - 1] = record;
    }
    return records;
  } finally {
    rmSync(dir, { recursive: true, force: true });
  }
}

// A place in bytes of the UTF-8 form of `text` as UTF-16 code units.
export function unitsOf(text, byteStart, byteLength) {
  const bytes = Buffer.from(text, 'utf8');
  const start = bytes.subarray(0, byteStart).toString('utf8').length;
  const end = bytes.subarray(0, byteStart + byteLength).toString('utf8').length;
  return { start, length: end - start };
}

export function diagnosticsInUnits(text, diagnostics) {
  return diagnostics.map((d) => ({ code: d.code, severity: d.severity, message: d.message, ...unitsOf(text, d.start, d.length) }));
}

// What `lytreq parse` warns about, from the package: the lint of `text`,
// then what the current peer's text loses (fidelity(3)) except on the very
// words a lint finding marks; nothing of the losses when the request cannot
// be written (`request` null: refused, or dump throws).
export function parseWarnings(lfp, text, request) {
  const lint = lfp.lint(text);
  if (request === null) return lint;
  let losses;
  try {
    losses = request.fidelity(3);
  } catch {
    return lint;
  }
  const told = (d) => lint.some((l) => l.start === d.start && l.length === d.length);
  return [...lint, ...losses.filter((d) => !told(d))];
}

// {value} of `work`, or {error} with what it threw.
export function attempt(work) {
  try {
    return { value: work() };
  } catch (error) {
    return { error };
  }
}
