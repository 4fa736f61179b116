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
  const page = await open(t, { args: ['--js-flags=--expose-gc'] });
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
  // The module in its worker has no window onto its memory: that of the process's heap is asked.
  const heap = async () => {
    const worker = page.workers();
    let bytes = 0;
    for (const one of worker) {
      await one.client.send('HeapProfiler.collectGarbage');
      const { usedSize, backingStorageSize = 0 } =
        /** @type {{ usedSize: number, backingStorageSize?: number }} */ (
          await one.client.send('Runtime.getHeapUsage')
        );
      bytes += usedSize + backingStorageSize;
    }
    const client = await page.createCDPSession();
    await client.send('HeapProfiler.collectGarbage');
    const { usedSize } = await client.send('Runtime.getHeapUsage');
    await client.detach();
    return bytes + usedSize;
  };
  await redesign(500);
  const before = await heap();
  await redesign(designs);
  const after = await heap();
  t.diagnostic(`${before} bytes, and ${after} after ${designs} more designs`);
  assert.ok(before > 1e6, 'the memory of the module is in it');
  assert.ok(after < before + 3e5, `${after - before} bytes more`);
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
  const refused = await page.evaluate(() =>
    fetch('https://example.org/').then(
      () => false,
      () => true,
    ),
  );
  assert.ok(refused, 'the policy of the page does not allow it, either');
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
    /** @type {Set<string | null>} */
    const reached = new Set();
    /** @type {string[]} */
    const unseen = [];
    for (let i = 0; i < wanted + 5; ++i) {
      await page.keyboard.press('Tab');
      const at = await page.evaluate(() => {
        const one = document.activeElement;
        if (!one || one === document.body) return undefined;
        const style = getComputedStyle(one);
        const seen = style.outlineStyle !== 'none' && parseFloat(style.outlineWidth) > 0;
        const name = `${one.tagName} ${one.className} ${one.textContent.slice(0, 20)}`;
        return { walk: one.getAttribute('data-walk'), seen, name };
      });
      if (!at) continue;
      reached.add(at.walk);
      if (!at.seen) unseen.push(at.name);
    }
    const missed = await page.evaluate(
      (walked) =>
        [...document.querySelectorAll('[data-walk]')]
          .filter((one) => !walked.includes(one.getAttribute('data-walk')))
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
