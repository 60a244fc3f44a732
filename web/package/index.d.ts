// Types of the package lytfilterparser (written by hand; test/types.test.js
// checks them against the module). Places are UTF-16 code units of the
// JavaScript string passed in: text.slice(start, start + length).

/** The longest text the module is given, in UTF-16 code units. */
export declare const MAX_TEXT_LENGTH: number;

/** A message of the library, exactly as it words it, with its place. */
export declare class RequestError extends Error {
  constructor(message: string, start?: number | null, length?: number | null, suggestions?: string[]);
  readonly name: 'RequestError';
  /** First code unit of the word the message is about; null when it names none. */
  start: number | null;
  /** Its length; 0 marks the place where the text ended too early. */
  length: number | null;
  /** At most 3 words of the vocabulary it may have meant, the closest first. */
  suggestions: string[];
}

export interface Diagnostic {
  /** Stable code, one of diagnosticCodes(). */
  code: string;
  severity: 'warning' | 'note';
  message: string;
  start: number;
  length: number;
}

export interface DiagnosticCode {
  code: string;
  severity: 'warning' | 'note';
  meaning: string;
}

export interface Word {
  /** As it stands in a request. */
  text: string;
  /** The library's kind number (its order in the vocabulary). */
  kind: number;
  /** A short name of the kind for people ("value type" ...). */
  kindName: string;
  code: number;
  meaning: string;
  /** The peers (1 to 3) that take it. */
  peers: readonly number[];
  places: number;
  readable: boolean;
  written: boolean;
}

export interface Name {
  name: string;
  /** "" when the name has no resolved name. */
  resolved: string;
}

export interface CompoundModel {
  kind: 'compound';
  operator: string;
  children: FilterModel[];
}
export interface ContentModel {
  kind: 'content';
  type: string;
  negated: boolean;
  names: Name[];
}
export interface InterfaceModel {
  kind: 'interface';
  negated: boolean;
  /** direction "" for an item without a direction (both). */
  interfaces: { name: string; direction: string }[];
}
export type FilterModel = CompoundModel | ContentModel | InterfaceModel;

export interface ColumnModel {
  type: string;
  mode: string;
  options: { direction: string; encryption: string; compression: string; print: string; url: string };
  names: Name[];
}

export interface NetworkModel {
  kind: 'network';
  /** Always a compound; no children when the request has no filter. */
  filter: CompoundModel;
  keys: ColumnModel[];
  values: ColumnModel[];
  sort: { type: string; index: number; updates: number };
}
export interface E2EModel {
  kind: string;
  link: string;
  dataType: string;
}

declare abstract class Request {
  /** The request as the library writes it; for peer 1 to 3 as that peer reads it. */
  dump(peer?: number): string;
  moduleNames(): string[];
  /** Sets the resolved name of every module name; throws RequestError for a name the map lacks. */
  resolve(map: Map<string, string> | Record<string, string>): void;
  /** What the text for peer 1 to 3 loses. */
  fidelity(peer: number): Diagnostic[];
  toJSON(): NetworkModel | E2EModel;
  toString(): string;
  /** Releases the module memory the request holds; later calls throw. */
  free(): void;
  [Symbol.dispose](): void;
}

export declare class NetworkRequest extends Request {
  /** Checks for peer 0 to 3 (default 3) and completes the request, as the library does. */
  check(peer?: number): { valid: boolean; message: string };
  /** Throws the RequestError, with its place, of the item that makes it invalid for the peer. */
  validate(peer?: number): void;
  /** The oldest peer that accepts it, or null. */
  minimalPeer(): number | null;
  /** Column catalogue numbers for peer 1 to 3 (default 3). */
  columns(peer?: number): number[];
  toJSON(): NetworkModel;
}

export declare class E2ERequest extends Request {
  toJSON(): E2EModel;
}

export interface Conversion {
  request: string;
  refusal: RequestError | null;
  diagnostics: Diagnostic[];
}

export interface LytFilterParser {
  /** The library's version, "MAJOR.MINOR.PATCH". */
  readonly version: string;
  readonly currentPeer: number;
  readonly maxTextLength: number;
  /** The size of the module's memory in bytes: it grows when a text needs more and never shrinks. */
  readonly memoryBytes: number;
  readonly RequestError: typeof RequestError;
  readonly NetworkRequest: typeof NetworkRequest;
  readonly E2ERequest: typeof E2ERequest;
  /** null for a text without a word; throws RequestError when the library refuses the text. */
  parse(text: string): NetworkRequest | E2ERequest | null;
  lint(text: string): Diagnostic[];
  /** A legacy command line in the current syntax, for legacy peer 1 or 2 (default 2). */
  convert(text: string, peer?: number): string;
  convertWithDiagnostics(text: string, peer?: number): Conversion;
  tokenize(text: string): string[];
  vocabulary(): readonly Word[];
  diagnosticCodes(): readonly DiagnosticCode[];
  /** The catalogue name of a column number (from 1, as columns() gives them), or null. */
  columnName(number: number): string | null;
}

export interface LoadOptions {
  /** The bytes of lfp.wasm, when the caller has them. */
  wasmBinary?: ArrayBuffer | Uint8Array;
}

/** Loads the module once; every call gives the same library. */
export declare function load(options?: LoadOptions): Promise<LytFilterParser>;
export default load;
