// The request editor: one CodeMirror field; the library (the lytfilterparser
// package) reads the text on every change and the page shows its refusal,
// its diagnostics, what every peer makes of the request, the request as a
// tree and its columns. The text and the mode live in the URL fragment, so a
// view is shared as a link.
import { autocompletion } from '@codemirror/autocomplete';
import { defaultKeymap, history, historyKeymap } from '@codemirror/commands';
import { linter, lintGutter } from '@codemirror/lint';
import { EditorState, Compartment } from '@codemirror/state';
import { EditorView, keymap, placeholder } from '@codemirror/view';

import load from 'lytfilterparser';

const started = performance.now();
// The module loads while the page builds the editor (start.js began it, and
// the page preloads the .wasm).
const loading = load();
const $ = (selector) => document.querySelector(selector);

const state = { mode: 'current', peer: 3, lfp: null };

// ---------------------------------------------------------------------------
// The fragment: #request=TEXT&mode=legacy&peer=2
// ---------------------------------------------------------------------------

function readFragment() {
  const params = new URLSearchParams(location.hash.slice(1));
  const peer = Number(params.get('peer'));
  return {
    text: params.get('request') ?? '',
    mode: params.get('mode') === 'legacy' ? 'legacy' : 'current',
    peer: [1, 2, 3].includes(peer) ? peer : 3,
  };
}

function writeFragment(text) {
  const params = new URLSearchParams();
  params.set('request', text);
  if (state.mode === 'legacy') params.set('mode', 'legacy');
  if (state.peer !== 3) params.set('peer', String(state.peer));
  window.history.replaceState(null, '', `#${params.toString().replace(/\+/g, '%20')}`);
}

// ---------------------------------------------------------------------------
// What the library says about the text
// ---------------------------------------------------------------------------

// The request of the current text in the current syntax: for the legacy
// mode, the conversion's request. {request, text, refusal, diagnostics}
function analyse(text) {
  const { lfp } = state;
  const result = { request: null, text, refusal: null, diagnostics: [] };
  if (state.mode === 'legacy') {
    const conversion = lfp.convertWithDiagnostics(text, 2);
    result.refusal = conversion.refusal;
    result.diagnostics = conversion.diagnostics;
    if (conversion.refusal || text.trim() === '') return result;
    result.text = conversion.request;
  } else {
    result.diagnostics = lfp.lint(text);
  }
  try {
    result.request = lfp.parse(result.text);
  } catch (error) {
    if (!(error instanceof lfp.RequestError)) throw error;
    if (state.mode === 'current') result.refusal = error;
    else result.refusal = new lfp.RequestError(error.message);
  }
  return result;
}

function quickFixes(refusal) {
  return refusal.suggestions.map((word) => ({
    name: `Replace with ${word}`,
    apply(view, from, to) {
      view.dispatch({ changes: { from, to, insert: word }, selection: { anchor: from + word.length } });
    },
  }));
}

// The CodeMirror diagnostics of a text: its refusal and the library's
// findings, each with its code.
function diagnosticsOf(view) {
  if (!state.lfp) return [];
  const text = view.state.doc.toString();
  const analysis = analyse(text);
  const found = [];
  const end = text.length;
  if (analysis.refusal) {
    const r = analysis.refusal;
    const from = Math.min(r.start ?? 0, end);
    const to = Math.min(from + (r.length ?? 0), end);
    found.push({ from, to, severity: 'error', message: r.message, source: 'refused', actions: quickFixes(r) });
  }
  for (const d of analysis.diagnostics) {
    const from = Math.min(d.start, end);
    found.push({ from, to: Math.min(from + d.length, end), severity: d.severity === 'note' ? 'info' : 'warning',
      message: d.message, source: d.code });
  }
  render(analysis);
  analysis.request?.free();
  return found;
}

// ---------------------------------------------------------------------------
// The panels
// ---------------------------------------------------------------------------

function element(tag, attributes = {}, ...children) {
  const node = document.createElement(tag);
  for (const [name, value] of Object.entries(attributes)) node.setAttribute(name, value);
  for (const child of children) node.append(child);
  return node;
}

// What peer `peer` makes of the request read once for every panel:
// {valid, message, written, losses}.
function judge(request, peer) {
  const { lfp } = state;
  if (request instanceof lfp.NetworkRequest) {
    const { valid, message } = request.check(peer);
    if (!valid) return { valid, message, written: '', losses: [] };
  }
  let losses = [];
  try {
    losses = request.fidelity(peer);
  } catch {
    losses = [];
  }
  const unsupported = losses.find((d) => d.code === 'peer-unsupported');
  if (unsupported) return { valid: false, message: unsupported.message, written: '', losses: [] };
  try {
    return { valid: true, message: '', written: request.dump(peer), losses };
  } catch (error) {
    return { valid: true, message: '', written: `(${error.message})`, losses };
  }
}

function renderPeers(analysis) {
  const tbody = $('#summary tbody');
  tbody.replaceChildren();
  const verdicts = {};
  for (const peer of [3, 2, 1]) {
    const verdict = analysis.request ? judge(analysis.request, peer) : null;
    verdicts[peer] = verdict;
    const cell = verdict === null ? '–' : verdict.valid ? 'valid' : `invalid: ${verdict.message}`;
    tbody.append(element('tr', {},
      element('td', {}, String(peer)),
      element('td', { class: verdict?.valid ? 'valid' : 'invalid' }, cell),
      element('td', {}, element('code', {}, verdict?.written ?? '')),
      element('td', { class: 'loss' }, (verdict?.losses ?? []).map((d) => `${d.code}: ${d.message}`).join('; '))));
  }
  const chosen = verdicts[state.peer];
  $('#verdict').textContent = chosen === null ? 'No request.' : chosen.valid ? `Peer ${state.peer}: valid` : `Peer ${state.peer}: invalid: ${chosen.message}`;
  $('#verdict').className = chosen?.valid ? 'valid' : 'invalid';
  $('#written').textContent = chosen?.written ?? '';
  $('#losses').replaceChildren(...(chosen?.losses ?? []).map((d) =>
    element('li', { class: 'loss' }, element('code', {}, d.code), ` ${d.message}`)));
}

function nameList(names) {
  return names.map((n) => (n.resolved ? `${n.name} → ${n.resolved}` : n.name)).join(' ');
}

// The model as nested lists, walked with a stack of its own (a request may
// nest deeply).
function renderExplain(model) {
  const root = $('#explain');
  if (!model) {
    root.replaceChildren();
    return;
  }
  const top = element('ul');
  if (model.kind === 'network' && model.filter.kind === 'compound' && model.filter.children.length === 0) {
    top.append(element('li', {}, 'filter: none'));
  } else if (model.kind === 'network') {
    const filter = element('li', {}, 'filter');
    const stack = [[model.filter, filter]];
    while (stack.length) {
      const [node, into] = stack.pop();
      const list = element('ul');
      into.append(list);
      const label = node.kind === 'compound' ? node.operator
        : node.kind === 'content' ? `${node.negated ? 'not ' : ''}${node.type}: ${nameList(node.names)}`
          : `${node.negated ? 'not ' : ''}interfaces: ${node.interfaces.map((i) => i.name + i.direction).join(' ')}`;
      const item = element('li', {}, label);
      list.append(item);
      if (node.kind === 'compound') for (const child of [...node.children].reverse()) stack.push([child, item]);
    }
    top.append(filter);
  }
  if (model.kind === 'network') {
    for (const [role, columns] of [['key', model.keys], ['value', model.values]]) {
      for (const c of columns) {
        top.append(element('li', {}, `${role} ${c.type} ${c.mode} ${Object.values(c.options).join(' ')}${c.names.length ? ': ' + nameList(c.names) : ''}`));
      }
    }
    top.append(element('li', {}, `sort ${model.sort.type}, index ${model.sort.index}, updates ${model.sort.updates}`));
  } else {
    top.append(element('li', {}, `${model.kind} ${model.link}, data type ${model.dataType}`));
  }
  root.replaceChildren(top);
}

function renderColumns(analysis, model) {
  const { lfp } = state;
  const tbody = $('#columns tbody');
  tbody.replaceChildren();
  const request = analysis.request;
  if (!(request instanceof lfp.NetworkRequest)) return;
  let numbers = [];
  try {
    numbers = request.columns(state.peer);
  } catch {
    return;
  }
  const sources = state.peer === 3 ? [...model.keys.map((c) => ['key', c]), ...model.values.map((c) => ['value', c])]
    : [['key', model.keys[0]], ['value', model.values[0]]];
  numbers.forEach((number, i) => {
    const [role, column] = sources[i] ?? ['', null];
    tbody.append(element('tr', {}, element('td', {}, role), element('td', {}, column?.type ?? ''),
      element('td', {}, String(number)), element('td', {}, state.lfp.columnName(number) ?? '?')));
  });
}

function render(analysis) {
  const field = $('#request');
  const status = $('#status');
  const warnings = analysis.diagnostics.length;
  if (analysis.refusal) {
    field.dataset.state = 'error';
    status.textContent = analysis.refusal.message;
  } else if (!analysis.request) {
    field.dataset.state = 'empty';
    status.textContent = 'Type a request.';
  } else {
    field.dataset.state = warnings ? 'warning' : 'valid';
    status.textContent = warnings ? `Read, with ${warnings} finding${warnings > 1 ? 's' : ''}.` : 'Read.';
  }
  renderPeers(analysis);
  const model = analysis.request?.toJSON() ?? null;
  renderExplain(model);
  renderColumns(analysis, model);
}

// ---------------------------------------------------------------------------
// Completion from the vocabulary
// ---------------------------------------------------------------------------

function completions(context) {
  if (!state.lfp) return null;
  const word = context.matchBefore(/[^\s[\]]*/);
  if (!word || (word.from === word.to && !context.explicit)) return null;
  const legacy = state.mode === 'legacy';
  const options = [];
  const seen = new Set();
  for (const w of state.lfp.vocabulary()) {
    if (!w.readable || seen.has(w.text) || w.kindName.startsWith('legacy') !== legacy) continue;
    seen.add(w.text);
    options.push({ label: w.text, detail: w.kindName, info: w.meaning, type: 'keyword' });
  }
  return { from: word.from, options, validFor: /^[^\s[\]]*$/ };
}

// ---------------------------------------------------------------------------
// Start
// ---------------------------------------------------------------------------

const fromLink = readFragment();
state.mode = fromLink.mode;
state.peer = fromLink.peer;
const lintCompartment = new Compartment();

const view = new EditorView({
  parent: $('#request'),
  state: EditorState.create({
    doc: fromLink.text,
    extensions: [
      history(),
      keymap.of([...defaultKeymap, ...historyKeymap]),
      EditorView.lineWrapping,
      EditorState.transactionFilter.of((tr) => (tr.newDoc.lines > 1 ? [] : tr)),  // one line
      EditorView.contentAttributes.of({ 'aria-labelledby': 'request-label', 'aria-describedby': 'status', spellcheck: 'false' }),
      placeholder('-f src 10.0.0.1 -k svc -v wb acc=rate -s top'),
      autocompletion({ override: [completions], activateOnTyping: true }),
      lintGutter(),
      lintCompartment.of(linter(diagnosticsOf, { delay: 80 })),
      EditorView.updateListener.of((update) => {
        if (update.docChanged) writeFragment(update.state.doc.toString());
      }),
    ],
  }),
});

// Runs the library over the text again (the mode or the peer changed): a
// new linter instance lints at once.
function relint() {
  view.dispatch({ effects: lintCompartment.reconfigure(linter(diagnosticsOf, { delay: 80 })) });
  writeFragment(view.state.doc.toString());
}

for (const radio of document.querySelectorAll('input[name="mode"]')) {
  radio.checked = radio.value === state.mode;
  radio.addEventListener('change', () => {
    state.mode = radio.value;
    relint();
  });
}

function selectPeer(peer) {
  state.peer = peer;
  for (const tab of document.querySelectorAll('[role="tab"]')) {
    tab.setAttribute('aria-selected', String(Number(tab.dataset.peer) === peer));
  }
}
selectPeer(state.peer);
for (const tab of document.querySelectorAll('[role="tab"]')) {
  tab.addEventListener('click', () => {
    selectPeer(Number(tab.dataset.peer));
    relint();
  });
}

window.addEventListener('hashchange', () => {
  const link = readFragment();
  if (link.text !== view.state.doc.toString()) {
    view.dispatch({ changes: { from: 0, to: view.state.doc.length, insert: link.text } });
  }
  state.mode = link.mode;
  for (const radio of document.querySelectorAll('input[name="mode"]')) radio.checked = radio.value === state.mode;
  selectPeer(link.peer);
  relint();
});

$('#share').addEventListener('click', async () => {
  writeFragment(view.state.doc.toString());
  try {
    await navigator.clipboard.writeText(location.href);
    $('#share').textContent = 'Link copied';
  } catch {
    $('#share').textContent = 'Link in the address bar';
  }
});

loading.then((lfp) => {
  state.lfp = lfp;
  $('#version').textContent = lfp.version;
  relint();
  const ready = performance.now();
  document.body.dataset.readyMs = String(Math.round(ready));
  window.lfpReady = { sinceNavigation: ready, sinceScript: ready - started, module: window.lfpModuleReady ?? ready };
}, (error) => {
  $('#status').textContent = `The library did not load: ${error.message}`;
});
