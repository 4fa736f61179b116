// How long it takes from an input to drawn pictures: node bench.js [--write DOCUMENT].
// Other work on the machine only ever adds, so that the least median of five rounds counts.

import { readFile, stat, writeFile } from 'node:fs/promises';
import os from 'node:os';
import process from 'node:process';
import { file, launched } from './tests/browser.js';

const rounds = 5;
const inputs = 25;

const filters = [
  { label: 'lowpass, order 5', settings: {}, limit: 16 },
  { label: 'lowpass, order 20', settings: { order: [20] }, limit: 16 },
  { label: 'lowpass, order 200', settings: { order: [200] }, limit: 50 },
  {
    label: 'bandpass, order 20',
    settings: { order: [20], response: ['bandpass'], frequency: [1000, 4000] },
    limit: 16,
  },
  {
    label: 'bandpass, order 200',
    settings: { order: [200], response: ['bandpass'], frequency: [1000, 4000] },
    limit: 50,
  },
];

/**
 * Turns the cutoff and waits for the pictures, many times.
 * @param {import('puppeteer-core').Page} page
 * @param {Record<string, (number | string)[]>} settings
 * @returns {Promise<{ drawn: number, session: number, panels: number }>} medians in ms
 */
function turned(page, settings) {
  return page.evaluate(
    async ({ settings, inputs }) => {
      const { store, counts, panels } = window.veltane;
      const once = () =>
        new Promise((done) => {
          const observer = new PerformanceObserver((list) => {
            for (const { startTime } of list.getEntriesByName('veltane:drawn')) {
              observer.disconnect();
              done(startTime);
            }
          });
          observer.observe({ type: 'mark' });
        });
      /** @param {number[]} values */
      const median = (values) => values.sort((a, b) => a - b)[values.length >> 1] ?? NaN;
      const times = [];
      const session = [];
      store.replace(settings);
      // Nothing is drawn where these are the settings already.
      await Promise.race([once(), new Promise((done) => setTimeout(done, 500))]);
      const { frequency = [3000] } = settings;
      for (let i = 1; i <= inputs; ++i) {
        const drawn = once();
        const start = performance.now();
        store.merge({ frequency: frequency.map((hz) => Number(hz) * (1 + i / 1000)) });
        times.push(Number(await drawn) - start);
        session.push(counts.value.microseconds / 1000);
        await new Promise((done) => setTimeout(done, 60));
      }
      return {
        drawn: median(times),
        session: median(session),
        panels: panels.value.length,
      };
    },
    { settings, inputs },
  );
}

async function measured() {
  const { browser, end } = await launched();
  const page = await browser.newPage();
  await page.setViewport({ width: 1920, height: 1080 });
  const start = performance.now();
  await page.goto(`file://${file}`);
  await page.waitForFunction(() => 'veltane' in window && window.veltane.shown.value);
  const ready = performance.now() - start;
  const rows = [];
  for (const { label, settings, limit } of filters) {
    let best = { drawn: Infinity, session: Infinity, panels: 0 };
    for (let round = 0; round < rounds; ++round) {
      const found = await turned(page, settings);
      if (found.drawn < best.drawn) best = found;
    }
    rows.push({ label, limit, ...best });
  }
  const version = await browser.version();
  await end();
  return { ready, rows, version };
}

const { ready, rows, version } = await measured();
const { size } = await stat(file);
const lines = [
  `- ${os.cpus()[0]?.model ?? 'unknown processor'}, ${os.cpus().length} cores, ${version}, 1920 x 1080`,
  `- the page is ${Math.round(size / 1000)} kB, and shows its first filter ${Math.round(ready)} ms after it was opened`,
  '',
  '| filter | panels | design and curves | input to drawn pictures | limit |',
  '|---|---|---|---|---|',
  ...rows.map(
    ({ label, panels, session, drawn, limit }) =>
      `| ${label} | ${panels} | ${session.toFixed(1)} ms | ${drawn.toFixed(1)} ms | ${limit} ms |`,
  ),
];
process.stdout.write(`${lines.join('\n')}\n`);
const [flag, document = ''] = process.argv.slice(2);
if (flag === '--write') {
  const text = await readFile(document, 'utf8');
  const block = /(<!-- page -->\n)[^]*?(<!-- end -->)/;
  if (!block.test(text)) throw new Error(`${document} has no part for these figures`);
  await writeFile(
    document,
    text.replace(block, (_, begin, end) => `${begin}\n${lines.join('\n')}\n\n${end}`),
  );
}
