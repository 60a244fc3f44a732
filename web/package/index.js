// lytfilterparser: the lytFilterParser library compiled to WebAssembly, with
// a thin JavaScript face. Texts cross into the module as UTF-8 bytes written
// straight into its memory (TextEncoder.encodeInto) and come back the same
// way; places come back in UTF-16 code units of the JavaScript string, so
// text.slice(start, start + length) is the word a place is about.
import createLfpModule from './lfp.mjs';

// The longest text the module is given, in UTF-16 code units: a longer one
// is refused with a RequestError before it reaches the module.
export const MAX_TEXT_LENGTH = 32 * 1024 * 1024;

// A message of the library, exactly as it words it, with the place of the
// word it is about (null when it names none) and words it may have meant.
export class RequestError extends Error {
  constructor(message, start = null, length = null, suggestions = []) {
    super(message);
    this.name = 'RequestError';
    this.start = start;
    this.length = length;
    this.suggestions = suggestions;
  }
}

const KIND_NETWORK = 1;
const KIND_VL = 2;
const KIND_FAULT = 3;

const encoder = new TextEncoder();
const decoder = new TextDecoder();
const disposeSymbol = typeof Symbol.dispose === 'symbol' ? Symbol.dispose : Symbol.for('nodejs.dispose');

// The peers each operation serves, as the command-line tool takes them.
const PEERS = {
  dump: [1, 3],
  check: [0, 3],
  columns: [1, 3],
  fidelity: [1, 3],
  convert: [1, 2],
};

function peerIn(operation, peer) {
  const [low, high] = PEERS[operation];
  if (!Number.isInteger(peer) || peer < low || peer > high) {
    throw new RangeError(`${operation}: peer ${String(peer)} is not one of ${low} to ${high}`);
  }
  return peer;
}

function faultOf(json) {
  const fault = JSON.parse(json);
  return new RequestError(fault.message, fault.start ?? null, fault.length ?? null, fault.suggestions ?? []);
}

class Library {
  constructor(module) {
    this.module = module;
    this.memory = module.asm.memory;
    this.heap = new Uint8Array(this.memory.buffer);
    this.words = new Uint32Array(this.memory.buffer);
    this.slot = module._lfp_slot() >>> 2;
    this.inputAt = 0;
    this.inputCapacity = 0;
    this.input = this.heap.subarray(0, 0);
    // Requests the caller dropped without free() are freed when collected;
    // free() empties the cell instead of unregistering, which costs more.
    this.registry = new FinalizationRegistry((cell) => {
      if (cell.handle !== 0) module._lfp_free(cell.handle);
    });
  }

  // Views of the module's memory: a grown memory has a new buffer.
  views() {
    if (this.heap.buffer !== this.memory.buffer) this.remap();
  }

  remap() {
    this.heap = new Uint8Array(this.memory.buffer);
    this.words = new Uint32Array(this.memory.buffer);
    this.input = this.heap.subarray(this.inputAt, this.inputAt + this.inputCapacity);
  }

  // Writes `text` into the input buffer; its size in bytes.
  write(text) {
    if (typeof text !== 'string') throw new TypeError('the text is not a string');
    if (text.length > MAX_TEXT_LENGTH) {
      throw new RequestError(`the text is longer than ${MAX_TEXT_LENGTH} UTF-16 code units`);
    }
    // UTF-8 takes at most 3 bytes for each UTF-16 code unit.
    const need = text.length * 3;
    if (need > this.inputCapacity) {
      const capacity = Math.max(need, 4096);
      const at = this.module._lfp_input(capacity);
      if (at === 0) throw new RequestError('the module has no memory left for the text');
      this.inputAt = at;
      this.inputCapacity = capacity;
      this.remap();
    } else {
      this.views();
    }
    return encoder.encodeInto(text, this.input).written;
  }

  // The result the last call left.
  result() {
    this.views();
    const at = this.words[this.slot];
    const size = this.words[this.slot + 1];
    return decoder.decode(this.heap.subarray(at, at + size));
  }

  // The result of a call that answers -1 when the library threw.
  checked(answer) {
    if (answer < 0) throw new RequestError(this.result());
    return answer;
  }

  kind() {
    this.views();
    return this.words[this.slot + 2];
  }
}

// What every request has. A request holds memory of the module until free()
// (or `using`, or when it is collected).
class Request {
  #library;
  #cell;  // {handle}: 0 once freed; the finalizer sees the same cell

  constructor(library, handle) {
    this.#library = library;
    this.#cell = { handle };
    library.registry.register(this, this.#cell);
  }

  get _library() {
    return this.#library;
  }

  get _handle() {
    const handle = this.#cell.handle;
    if (handle === 0) throw new Error('the request was freed');
    return handle;
  }

  free() {
    const handle = this.#cell.handle;
    if (handle === 0) return;
    this.#cell.handle = 0;
    this.#library.module._lfp_free(handle);
  }

  [disposeSymbol]() {
    this.free();
  }

  dump(peer) {
    const lib = this.#library;
    lib.checked(lib.module._lfp_dump(this._handle, peer === undefined ? 0 : peerIn('dump', peer)));
    return lib.result();
  }

  moduleNames() {
    const lib = this.#library;
    lib.checked(lib.module._lfp_module_names(this._handle));
    return JSON.parse(lib.result());
  }

  // Sets the resolved name of every module name from `map` (a Map or a plain
  // object of name to resolved name). A name the map lacks, or a resolved
  // name that the request's text cannot carry (a blank, a bracket; the
  // module says which), is refused.
  resolve(map) {
    const lib = this.#library;
    const lookup = map instanceof Map ? (name) => map.get(name) : (name) => (Object.hasOwn(map, name) ? map[name] : undefined);
    const resolved = [];
    for (const name of this.moduleNames()) {
      const value = lookup(name);
      if (value === undefined) throw new RequestError(`no resolved name in the map for: ${name}`);
      if (typeof value !== 'string') throw new TypeError(`the resolved name of ${name} is not a string`);
      if (value.includes('\0')) {
        throw new RequestError(`the resolved name ${value} holds "\0", which a request cannot carry`);
      }
      resolved.push(value);
    }
    const size = lib.write(resolved.map((value) => value + '\0').join(''));
    if (lib.checked(lib.module._lfp_resolve(this._handle, size)) !== 0) throw new RequestError(lib.result());
  }

  fidelity(peer) {
    const lib = this.#library;
    lib.checked(lib.module._lfp_fidelity(this._handle, peerIn('fidelity', peer)));
    return JSON.parse(lib.result());
  }

  toJSON() {
    const lib = this.#library;
    lib.checked(lib.module._lfp_model(this._handle));
    return JSON.parse(lib.result());
  }

  toString() {
    try {
      return this.dump();
    } catch (error) {
      return `[${this.constructor.name}: ${error.message}]`;
    }
  }
}

export class NetworkRequest extends Request {
  // {valid, message}; completes the request as the library does.
  check(peer = 3) {
    const lib = this._library;
    const valid = lib.checked(lib.module._lfp_check(this._handle, peerIn('check', peer)));
    return { valid: valid === 1, message: lib.result() };
  }

  // Throws the RequestError (with its place) of the item that makes the
  // request invalid for `peer`.
  validate(peer = 3) {
    const lib = this._library;
    if (lib.checked(lib.module._lfp_validate(this._handle, peerIn('check', peer))) !== 0) throw faultOf(lib.result());
  }

  minimalPeer() {
    const lib = this._library;
    const peer = lib.checked(lib.module._lfp_minimal_peer(this._handle));
    return peer === 0 ? null : peer;
  }

  columns(peer = 3) {
    const lib = this._library;
    lib.checked(lib.module._lfp_columns(this._handle, peerIn('columns', peer)));
    return JSON.parse(lib.result());
  }
}

export class E2ERequest extends Request {}

// The loaded library: what load() gives.
class LytFilterParser {
  #lib;

  constructor(lib) {
    this.#lib = lib;
    lib.module._lfp_vocabulary();
    const table = JSON.parse(lib.result());
    this.version = table.version;
    this.currentPeer = table.current;
    this.maxTextLength = MAX_TEXT_LENGTH;
    this.RequestError = RequestError;
    this.NetworkRequest = NetworkRequest;
    this.E2ERequest = E2ERequest;
    this._words = Object.freeze(
      table.words.map(([text, kindName, kind, code, meaning, peers, places, readable, written]) =>
        Object.freeze({
          text,
          kind,
          kindName,
          code,
          meaning,
          peers: Object.freeze([1, 2, 3].filter((peer) => (peers & (1 << peer)) !== 0)),
          places,
          readable,
          written,
        }),
      ),
    );
    this._codes = Object.freeze(
      table.codes.map(([code, severity, meaning]) => Object.freeze({ code, severity, meaning })),
    );
    this._columns = Object.freeze(table.columns);
  }

  // The request of `text`: a NetworkRequest, an E2ERequest, or null for a
  // text without a word. Throws RequestError when the library refuses it.
  parse(text) {
    const lib = this.#lib;
    const size = lib.write(text);
    const handle = lib.module._lfp_parse(size);
    if (handle === 0) {
      if (lib.kind() === KIND_FAULT) throw faultOf(lib.result());
      return null;
    }
    return lib.kind() === KIND_NETWORK ? new NetworkRequest(lib, handle) : new E2ERequest(lib, handle);
  }

  lint(text) {
    const lib = this.#lib;
    const count = lib.checked(lib.module._lfp_lint(lib.write(text)));
    return count === 0 ? [] : JSON.parse(lib.result());
  }

  convert(text, peer = 2) {
    const lib = this.#lib;
    const size = lib.write(text);
    if (lib.checked(lib.module._lfp_convert(size, peerIn('convert', peer))) !== 0) throw faultOf(lib.result());
    return lib.result();
  }

  // {request, refusal (a RequestError or null), diagnostics}
  convertWithDiagnostics(text, peer = 2) {
    const lib = this.#lib;
    const size = lib.write(text);
    lib.checked(lib.module._lfp_convert_diagnostics(size, peerIn('convert', peer)));
    const done = JSON.parse(lib.result());
    const refusal = done.refusal
      ? new RequestError(done.refusal.message, done.refusal.start ?? null, done.refusal.length ?? null,
          done.refusal.suggestions ?? [])
      : null;
    return { request: done.request, refusal, diagnostics: done.diagnostics };
  }

  tokenize(text) {
    const lib = this.#lib;
    lib.checked(lib.module._lfp_tokenize(lib.write(text)));
    return JSON.parse(lib.result());
  }

  // The size of the module's memory in bytes: it grows when a text needs
  // more and never shrinks.
  get memoryBytes() {
    return this.#lib.memory.buffer.byteLength;
  }

  vocabulary() {
    return this._words;
  }

  diagnosticCodes() {
    return this._codes;
  }

  // The catalogue name of column `number` (numbered from 1, as columns()
  // gives them), or null.
  columnName(number) {
    return Number.isInteger(number) && number >= 1 && number <= this._columns.length ? this._columns[number - 1] : null;
  }
}

let loading = null;

// Loads the module once; every call gives the same library. In Node the
// .wasm is read from beside this file; in a browser it is fetched from
// there, unless options.wasmBinary holds its bytes.
export function load(options = {}) {
  if (loading === null) {
    loading = instantiate(options).catch((error) => {
      loading = null;
      throw error;
    });
  }
  return loading;
}

async function instantiate(options) {
  const init = {};
  if (options.wasmBinary) {
    init.wasmBinary = options.wasmBinary;
  } else if (typeof process === 'object' && process.versions && process.versions.node && typeof window === 'undefined') {
    const fs = 'node:fs/promises';
    const { readFile } = await import(/* @vite-ignore */ fs);
    init.wasmBinary = await readFile(new URL('./lfp.wasm', import.meta.url));
  }
  const module = await createLfpModule(init);
  return new LytFilterParser(new Library(module));
}

export default load;
