// Compiled (not run) by types.test.js with tsc --strict: the declarations
// must take the documented uses and refuse wrong ones.
import load, { RequestError, NetworkRequest, E2ERequest, MAX_TEXT_LENGTH } from 'lytfilterparser';
import type { Diagnostic, NetworkModel, E2EModel, FilterModel, Word } from 'lytfilterparser';

export async function use(): Promise<string> {
  const lfp = await load();
  const version: string = lfp.version;
  const limit: number = MAX_TEXT_LENGTH + lfp.maxTextLength + lfp.memoryBytes;
  const request = lfp.parse('-k src -v wb');
  if (request === null) return version;
  let text: string = request.dump() + request.dump(1);
  if (request instanceof NetworkRequest) {
    const { valid, message }: { valid: boolean; message: string } = request.check(2);
    const peer: number | null = request.minimalPeer();
    const numbers: number[] = request.columns();
    const names = numbers.map((n) => lfp.columnName(n) ?? '?');
    request.validate();
    const model: NetworkModel = request.toJSON();
    const walk = (node: FilterModel): number =>
      node.kind === 'compound' ? node.children.reduce((sum, child) => sum + walk(child), 1)
        : node.kind === 'content' ? node.names.length : node.interfaces.length;
    text += String(valid) + message + String(peer) + names.join() + walk(model.filter) + model.sort.type;
  } else if (request instanceof E2ERequest) {
    const model: E2EModel = request.toJSON();
    text += model.link + model.dataType;
  }
  const losses: Diagnostic[] = request.fidelity(1);
  request.resolve(new Map([['a', 'b']]));
  request.resolve({ a: 'b' });
  const names: string[] = request.moduleNames();
  request.free();
  request[Symbol.dispose]();
  try {
    lfp.convert('-g topsrc -y b', 1);
  } catch (error) {
    if (error instanceof RequestError) text += error.message + String(error.start) + String(error.length) + error.suggestions.join();
  }
  const conversion = lfp.convertWithDiagnostics('-g topsrc -y b');
  const refusal: RequestError | null = conversion.refusal;
  const words: readonly Word[] = lfp.vocabulary();
  const tokens: string[] = lfp.tokenize('-k src');
  const codes = lfp.diagnosticCodes().map((c) => c.code + c.severity + c.meaning);
  const lint: Diagnostic[] = lfp.lint('-k src');
  // @ts-expect-error: a text is a string
  lfp.parse(42);
  // @ts-expect-error: parse may give null
  lfp.parse('-k src').dump();
  return text + limit + losses.length + names.join() + conversion.request + String(refusal) + words.length +
    tokens.join() + codes.join() + lint.length;
}
