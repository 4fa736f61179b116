// The command, whose numbers and bytes the page's are held against.

import { execFile } from 'node:child_process';
import { existsSync } from 'node:fs';
import path from 'node:path';
import process from 'node:process';

const usual = ['dev', 'release', 'asan'].map((preset) => `../build/${preset}/bin/veltane`);

/** The built command. */
export const command = path.resolve(
  process.env.VELTANE_COMMAND ?? usual.find((file) => existsSync(file)) ?? 'veltane',
);

/**
 * @param {readonly string[]} words
 * @param {string} [input]
 * @returns {Promise<{ status: number, output: string, errors: string }>}
 */
export function run(words, input = '') {
  return new Promise((done) => {
    const child = execFile(
      command,
      words,
      { maxBuffer: 1e9 },
      (/** @type {(Error & { code?: unknown }) | null} */ error, output, errors) =>
        done({ status: error ? Number(error.code ?? 1) : 0, output, errors }),
    );
    // What does not read its input ends before it is written.
    child.stdin?.on('error', () => {});
    child.stdin?.end(input);
  });
}
