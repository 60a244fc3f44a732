// Starts loading the library as soon as the page is parsed, before the
// editor's own code has been read: the module is ready while CodeMirror
// still loads. main.js gets the same library from load().
import load from 'lytfilterparser';

load().then(() => {
  window.lfpModuleReady = performance.now();
}, () => {});
