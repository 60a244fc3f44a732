// The editor page in a real browser (Debian's chromium, driven by
// playwright-core) against the built site on a loopback server: type, see
// the marked word and the message, take a suggestion, complete a word,
// switch peers, open a shared link, use the legacy mode. A screenshot is
// kept in build/web/artifacts/.
import assert from 'node:assert/strict';
import { mkdirSync } from 'node:fs';
import { join } from 'node:path';
import { after, before, test } from 'node:test';

import { chromium } from 'playwright-core';

import { lytreqBatch, root } from './native.js';
import { serve } from './serve.js';

const site = process.env.LFP_WEB_SITE ?? join(root, 'build/web/site');
const artifacts = join(root, 'build/web/artifacts');
let server;
let browser;

before(async () => {
  server = await serve(site, { lifetimeMs: 180_000 });
  browser = await chromium.launch({ executablePath: '/usr/bin/chromium', args: ['--no-sandbox'], timeout: 60_000 });
});

after(async () => {
  await browser?.close();
  await server?.close();
});

async function open(url = server.url) {
  const page = await browser.newPage();
  page.setDefaultTimeout(15_000);
  const errors = [];
  page.on('pageerror', (error) => errors.push(error));
  await page.goto(url);
  await page.waitForSelector('body[data-ready-ms]');
  return { page, errors };
}

test('type, see the marked word and the message, take a suggestion, switch peers, share', async () => {
  const { page, errors } = await open();
  const field = page.getByLabel('Request');
  await field.click();
  await page.keyboard.type('-k Src -v wb');
  const refused = lytreqBatch('parse', ['-k Src -v wb'])[0];

  const marked = page.locator('.cm-lintRange-error');
  await marked.waitFor();
  assert.equal(await marked.textContent(), 'Src');
  await assert.doesNotReject(page.getByRole('status').filter({ hasText: refused.error }).waitFor());
  assert.equal(await page.locator('#request').getAttribute('data-state'), 'error');

  await marked.hover();
  const tooltip = page.locator('.cm-tooltip-lint');
  await tooltip.filter({ hasText: refused.error }).waitFor();
  await tooltip.getByText(`Replace with ${refused.suggestions[0]}`).click();
  const fixed = '-k src -v wb';
  await page.getByRole('status').filter({ hasText: /^Read/ }).waitFor();
  assert.equal(await page.locator('.cm-content').textContent(), fixed);
  assert.equal(await page.locator('#request').getAttribute('data-state'), 'valid');
  assert.match(await page.locator('#explain').textContent(), /^filter: nonekey src/);

  const written = {};
  for (const peer of [1, 2, 3]) written[peer] = lytreqBatch('parse', [fixed], ['--peer', String(peer)])[0].request;
  assert.equal(await page.locator('#written').textContent(), written[3]);
  await page.getByRole('tab', { name: 'Peer 1' }).click();
  await page.locator('#written').filter({ hasText: written[1] }).waitFor();
  assert.equal(await page.locator('#written').textContent(), written[1]);
  assert.equal(await page.locator('#columns tbody tr').count(), 2);
  for (const peer of [1, 2, 3]) {
    const row = page.locator('#summary tbody tr').filter({ has: page.locator('td:first-child', { hasText: String(peer) }) });
    assert.equal(await row.locator('code').textContent(), written[peer]);
  }

  await page.screenshot({ path: (mkdirSync(artifacts, { recursive: true }), join(artifacts, 'editor.png')), fullPage: true });

  // The link opens the same view in a new page.
  const link = page.url();
  assert.match(link, /#request=/);
  const shared = await open(link);
  assert.equal(await shared.page.locator('.cm-content').textContent(), fixed);
  assert.equal(await shared.page.getByRole('tab', { name: 'Peer 1' }).getAttribute('aria-selected'), 'true');
  await shared.page.locator('#written').filter({ hasText: written[1] }).waitFor();
  await shared.page.close();
  assert.deepEqual(errors, []);
  await page.close();
});

test('completion offers the vocabulary; a finding shows its code; the legacy mode converts', async () => {
  const { page, errors } = await open();
  await page.getByLabel('Request').click();
  await page.keyboard.type('-k sr');
  const option = page.locator('.cm-tooltip-autocomplete li').filter({ hasText: /^src/ }).first();
  await option.click();  // the popup ignores keys for a moment after it opens
  assert.equal(await page.locator('.cm-content').textContent(), '-k src');
  await page.keyboard.type(' -v wb -f src a -f or');
  const warning = lytreqBatch('parse', ['-k src -v wb -f src a -f or'])[0].warnings[0];
  await page.locator('.cm-lintRange-warning').first().waitFor();
  assert.equal(await page.locator('#request').getAttribute('data-state'), 'warning');
  assert.match(await page.locator('#explain').textContent(), /^filterandsrc: a/);
  await page.locator('.cm-lintRange-warning').first().hover();
  await page.locator('.cm-tooltip-lint').filter({ hasText: warning.message }).filter({ hasText: warning.code }).waitFor();

  await page.getByLabel('legacy command line').check();
  await page.locator('.cm-content').click();
  await page.keyboard.press('Control+a');
  await page.keyboard.type('-g topsrc -y b');
  const converted = lytreqBatch('convert', ['-g topsrc -y b'])[0].request;
  await page.locator('#written').filter({ hasText: converted.trim() }).waitFor();
  assert.match(page.url(), /mode=legacy/);
  assert.deepEqual(errors, []);
  await page.close();
});
