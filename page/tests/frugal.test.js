// What the page does not do: design more than is seen, keep memory, ask a network, or leave somebody
// with a keyboard behind.

import assert from 'node:assert/strict';
import { readFile } from 'node:fs/promises';
import { createRequire } from 'node:module';
import process from 'node:process';
import { test } from 'node:test';
import { open } from './browser.js';
import { designed } from './steps.js';

/** @typedef {import('puppeteer-core').Page} Page */

const axe = createRequire(import.meta.url).resolve('axe-core/axe.min.js');

/** @param {Page} page */
async function openTabs(page) {
  const tabs = await page.$$('[role=tab]');
  return [undefined, ...tabs];
}

void test('a burst of 10,000 changes is one design of the last', async (t) => {
  const page = await open(t);
  const counted = await page.evaluate(async () => {
    const { store, live, shown } = window.veltane;
    /** @type {unknown[]} */
    const asked = [];
    const ask = live.ask.bind(live);
    live.ask = (name, request) => {
      if (name === 'live') asked.push(/** @type {{ settings: unknown }} */ (request).settings);
      return ask(name, request);
    };
    for (let i = 0; i < 10_000; ++i) store.set('frequency', [1000 + i / 10]);
    const wanted = JSON.stringify(store.state.value.settings);
    while (JSON.stringify(shown.value?.asked) !== wanted)
      await new Promise((later) => setTimeout(later, 5));
    await new Promise((later) => setTimeout(later, 1500));
    return { asked, wanted };
  });
  assert.deepEqual(counted.asked.at(-1), JSON.parse(counted.wanted));
  // The first is in flight while the others arrive.
  assert.ok(counted.asked.length <= 2, `${counted.asked.length} designs`);
});

void test('memory does not grow from one design to the next', async (t) => {
  const designs = Number(process.env.VELTANE_REDESIGNS ?? 4000);
  // A worker keeps its memory to itself, unless it is told to leave a way to it.
  const page = await open(t, {
    before: async (opened) => {
      await opened.evaluateOnNewDocument(() => {
        const hook = `const start = WebAssembly.instantiate;
          WebAssembly.instantiate = async (...all) => (self.instance = await start(...all));`;
        class Hooked extends Blob {
          /** @param {BlobPart[]} parts @param {BlobPropertyBag} [options] */
          constructor(parts, options) {
            super(options?.type === 'text/javascript' ? [hook, ...parts] : parts, options);
          }
        }
        Object.assign(window, { Blob: Hooked });
      });
    },
  });
  /** @param {number} count */
  const redesign = (count) =>
    page.evaluate(async (times) => {
      const { live } = window.veltane;
      for (let i = 0; i < times; ++i)
        await live.ask('live', {
          settings: { order: [2 + (i % 19)], frequency: [500 + (i % 1000)] },
          panels: ['level'],
        });
    }, count);
  /** @param {import('puppeteer-core').WebWorker} worker */
  const moduleMemory = (worker) =>
    worker.evaluate(() => {
      const { instance } = /** @type {{ instance: WebAssembly.Instance }} */ (
        /** @type {unknown} */ (self)
      );
      const memory = Object.values(instance.exports).find(
        (one) => one instanceof WebAssembly.Memory,
      );
      return memory instanceof WebAssembly.Memory ? memory.buffer.byteLength : NaN;
    });
  /** @param {import('puppeteer-core').CDPSession} client */
  const heap = async (client) => {
    await client.send('HeapProfiler.collectGarbage');
    return (await client.send('Runtime.getHeapUsage')).usedSize;
  };
  const measure = async () => {
    const client = await page.createCDPSession();
    const heaps = await Promise.all(
      [client, ...page.workers().map((worker) => worker.client)].map(heap),
    );
    await client.detach();
    const modules = await Promise.all(page.workers().map(moduleMemory));
    const sum = (/** @type {number[]} */ list) => list.reduce((a, b) => a + b, 0);
    return { heap: sum(heaps), modules: sum(modules) };
  };
  await redesign(500);
  const before = await measure();
  await redesign(designs);
  const after = await measure();
  t.diagnostic(
    `modules ${before.modules} bytes and heap ${before.heap}; after ${designs} more designs ` +
      `${after.modules} and ${after.heap}`,
  );
  assert.ok(before.modules > 1e6, 'the memory of the modules is in it');
  assert.equal(after.modules, before.modules);
  // Less than four bytes for each of 100,000 designs.
  assert.ok(after.heap < before.heap + 4e5, `${after.heap - before.heap} bytes more`);
});

void test('nothing is asked of a network', async (t) => {
  /** @type {string[]} */
  const asked = [];
  const page = await open(t, {
    before: (opened) => {
      opened.on('request', (request) => asked.push(request.url()));
      return Promise.resolve();
    },
  });
  for (const tab of await openTabs(page)) {
    await tab?.click();
    await page.evaluate(() => window.veltane.store.set('order', [7]));
    await designed(page);
  }
  const outside = asked.filter((url) => !/^(file|blob|data):/.test(url));
  assert.deepEqual(outside, []);
  assert.equal(asked.filter((url) => url.startsWith('file:')).length, 1, 'the page itself');
  const policy = await page.$eval('meta[http-equiv=Content-Security-Policy]', (meta) =>
    meta.getAttribute('content'),
  );
  assert.match(policy ?? '', /default-src 'none'/);
  assert.doesNotMatch(policy ?? '', /connect-src|https?:|\*/);
});

for (const theme of ['light', 'dark'])
  for (const width of [360, 1280])
    void test(`axe finds nothing, ${theme}, ${width} px`, async (t) => {
      const page = await open(t, { width });
      await page.emulateMediaFeatures([{ name: 'prefers-color-scheme', value: theme }]);
      await page.evaluate(await readFile(axe, 'utf8'));
      for (const tab of await openTabs(page)) {
        await tab?.click();
        const violations = await page.evaluate(async () => {
          const { axe } = /** @type {{ axe: typeof import('axe-core') }} */ (
            /** @type {unknown} */ (window)
          );
          const { violations } = await axe.run();
          return violations.map(
            ({ id, nodes }) => `${id}: ${nodes.map(({ target }) => target.join(' ')).join(', ')}`,
          );
        });
        assert.deepEqual(violations, []);
      }
    });

void test('every control is reached by the keyboard, with its focus seen, and left again', async (t) => {
  const page = await open(t);
  for (const tab of await openTabs(page)) {
    await tab?.click();
    // What the walk has to reach: of radio buttons and tabs one each, as arrow keys do the rest.
    const wanted = await page.evaluate(() => {
      const controls = 'a[href], button, input, select, textarea, summary, [tabindex]';
      const all = [...document.querySelectorAll(controls)].filter(
        (one) =>
          one instanceof HTMLElement &&
          one.checkVisibility({ visibilityProperty: true }) &&
          one.tabIndex >= 0 &&
          !one.matches(':disabled') &&
          !(one instanceof HTMLInputElement && one.type === 'radio' && !one.checked),
      );
      all.forEach((one, index) => one.setAttribute('data-walk', String(index)));
      if (document.activeElement instanceof HTMLElement) document.activeElement.blur();
      return all.length;
    });
    /** @type {Set<string>} */
    const reached = new Set();
    /** @type {string[]} */
    const unseen = [];
    // There are stops besides, such as what scrolls, and the walk begins where the click was.
    for (let i = 0; i < 2 * wanted + 20 && reached.size < wanted; ++i) {
      await page.keyboard.press('Tab');
      const at = await page.evaluate(() => {
        const one = document.activeElement;
        if (!one || one === document.body) return undefined;
        // Where a control is made of parts, one of them may show it.
        const outlined = (/** @type {Element} */ part, pseudo = '') => {
          const style = getComputedStyle(part, pseudo);
          return style.outlineStyle !== 'none' && parseFloat(style.outlineWidth) > 0;
        };
        const parts = [one, ...one.children];
        const seen = parts.some((part) =>
          ['', '::before', '::after'].some((pseudo) => outlined(part, pseudo)),
        );
        const name = `${one.tagName} ${one.className} ${one.textContent.slice(0, 20)}`;
        return { walk: one.getAttribute('data-walk'), seen, name };
      });
      if (!at) continue;
      if (at.walk !== null) reached.add(at.walk);
      if (!at.seen) unseen.push(at.name);
    }
    const missed = await page.evaluate(
      (walked) =>
        [...document.querySelectorAll('[data-walk]')]
          .filter((one) => !walked.includes(one.getAttribute('data-walk') ?? ''))
          // A part that has just been opened may still find out what is of use.
          .filter((one) => one.checkVisibility() && !one.matches(':disabled'))
          .map((one) => `${one.tagName} ${one.className} ${one.textContent.slice(0, 40)}`),
      [...reached],
    );
    assert.deepEqual(missed, []);
    assert.deepEqual(unseen, []);
    await page.evaluate(() =>
      document.querySelectorAll('[data-walk]').forEach((one) => one.removeAttribute('data-walk')),
    );
  }
});
