// Makes one file of the page: node build.js FOLDER OUTPUT, where FOLDER has what emscripten made.

import { createHash } from 'node:crypto';
import { readFile, rename, writeFile } from 'node:fs/promises';
import path from 'node:path';
import process from 'node:process';
import { fileURLToPath } from 'node:url';
import { gzipSync } from 'node:zlib';
import { build } from 'esbuild';

const [folder = '', output = ''] = process.argv.slice(2);
if (output === '') {
  process.stderr.write('usage: node build.js FOLDER OUTPUT\n');
  process.exit(2);
}
const here = path.dirname(fileURLToPath(import.meta.url));

/**
 * @param {string} entry
 * @param {import('esbuild').BuildOptions} [options]
 */
async function bundled(entry, options = {}) {
  const result = await build({
    entryPoints: [path.join(here, 'src', entry)],
    bundle: true,
    minify: true,
    write: false,
    target: 'es2022',
    charset: 'utf8',
    legalComments: 'inline',
    alias: { 'veltane-wasm': path.resolve(folder, 'veltane-page.js') },
    // A worker made of a text has no address, and asks for none.
    define: { 'import.meta.url': '""' },
    ...options,
  });
  const [file] = result.outputFiles ?? [];
  if (!file) throw new Error(`${entry} made no file`);
  return file.text;
}

/** @param {string} code  to stand in an element that is ended by the next </script> */
const inScript = (code) => code.replaceAll('</script', '<\\/script');

const worker = await bundled('session/worker.ts', { format: 'iife' });
const listen = await bundled('listen/processor.ts', { format: 'iife' });
const script = inScript(
  await bundled('main.ts', {
    format: 'esm',
    define: { WORKER_CODE: JSON.stringify(worker), LISTEN_CODE: JSON.stringify(listen) },
  }),
);
const style = await bundled('style/page.css');
const wasm = await readFile(path.join(folder, 'veltane-page.wasm'));

/** @param {string} text */
const hash = (text) => `'sha256-${createHash('sha256').update(text).digest('base64')}'`;

// Nothing may be fetched from anywhere; workers are made of the page's own texts.
const policy = [
  "default-src 'none'",
  `script-src ${hash(script)} 'wasm-unsafe-eval' blob: data:`,
  'worker-src blob: data:',
  `style-src 'unsafe-inline'`,
  'img-src data: blob:',
  'media-src blob:',
  "base-uri 'none'",
  "form-action 'none'",
].join('; ');

/** @type {Record<string, string>} */
const parts = {
  policy,
  style,
  module: gzipSync(wasm, { level: 9 }).toString('base64'),
  script,
};
const template = await readFile(path.join(here, 'src', 'page.html'), 'utf8');
const page = template.replaceAll(
  /\{(policy|style|module|script)\}/g,
  (_, /** @type {string} */ name) => parts[name] ?? '',
);
await writeFile(`${output}.part`, page);
await rename(`${output}.part`, output);
