// A filter in the page's address.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { open } from './browser.js';
import { begin, boxSettings, catchCopies, designed, textOf } from './steps.js';

/** @param {import('puppeteer-core').Page} page @param {string} hash */
async function go(page, hash) {
  await page.evaluate((wanted) => {
    location.hash = wanted;
  }, hash);
  // The address is read in an event of its own, which follows.
  await page.evaluate(() => new Promise((done) => setTimeout(done, 50)));
}

void test('an address is a filter', async (t) => {
  const page = await open(t, {
    hash: '#order=8&response=bandpass&frequency=300,3400&vs.order=4&view.low=20&view.scale=linear',
  });
  const box = await boxSettings(page);
  assert.deepEqual(box.order, [8]);
  assert.deepEqual(box.frequency, [300, 3400]);
  assert.deepEqual(await page.evaluate(() => window.veltane.store.state.value), {
    settings: { order: [8], response: ['bandpass'], frequency: [300, 3400] },
    other: { order: [4] },
    view: { low: 20, scale: 'linear' },
  });
  assert.equal(await textOf(page, '.notice p'), '');

  await t.test('follows what is set, and leads back to it', async () => {
    await begin(page, { order: [7], name: ['a&b = "c", #d'], frequency: [440.5] });
    await page.waitForFunction(() => location.hash.includes('order=7'));
    const state = await page.evaluate(() => window.veltane.store.state.value);
    const hash = await page.evaluate(() => location.hash);
    await begin(page);
    await page.waitForFunction(() => location.hash === '');
    await go(page, hash);
    assert.deepEqual(await page.evaluate(() => window.veltane.store.state.value), state);
    await page.locator('header button[title^="Undo"]').click();
    assert.deepEqual(await page.evaluate(() => window.veltane.store.state.value.settings), {});
  });

  await t.test('changes at most some times a second', async () => {
    const written = await page.evaluate(async () => {
      let count = 0;
      const begun = performance.now();
      const replace = history.replaceState.bind(history);
      history.replaceState = (...words) => {
        ++count;
        replace(...words);
      };
      for (let order = 2; order < 200; ++order) {
        window.veltane.store.set('order', [order]);
        await new Promise((done) => setTimeout(done, 5));
      }
      await new Promise((done) => setTimeout(done, 400));
      history.replaceState = replace;
      return { count, seconds: (performance.now() - begun) / 1000, hash: location.hash };
    });
    assert.match(written.hash, /order=199/);
    const { count, seconds } = written;
    assert.ok(count >= 1 && count <= 4 * seconds + 1, `${count} times in ${seconds} s`);
  });

  await t.test('has the title of the filter', async () => {
    await begin(page, { order: [7], topology: ['butterworth'] });
    await page.waitForFunction(() => document.title.startsWith('butterworth lowpass of order 7,'));
    assert.match(await page.title(), / – veltane$/);
  });

  await t.test('is copied as it is', async () => {
    await begin(page, { order: [9] });
    const copied = await catchCopies(page);
    await page.locator('header button[title*="link"]').click();
    assert.match(await copied(), /^file:.*#order=9$/);
  });
});

void test('wrong addresses', async (t) => {
  const page = await open(t);
  const fresh = await page.evaluate(() => window.veltane.description.fresh);
  for (const [hash, said] of /** @type {const} */ ([
    ['#order=eight', 'order=eight'],
    ['#order=4.5', 'order=4.5'],
    ['#order=', 'order'],
    ['#order=Infinity', 'order=Infinity'],
    ['#topology=bessel', 'topology=bessel'],
    ['#frequency=1,2,3', 'frequency=1,2,3'],
    ['#nonsense', 'nonsense'],
    ['#__proto__=1&constructor=2', '__proto__=1, constructor=2'],
    ['#view.low=-3&view.scale=round', 'view.low=-3, view.scale=round'],
    ['#vs=3', 'vs=3'],
    ['#%E0%A4%A', '\uFFFD%A'],
    ['#javascript:alert(1)', 'javascript:alert(1)'],
    ['#order=<img src=x onerror=document.title=1>', 'order=<img src=x onerror=document.title=1>'],
  ])) {
    await begin(page);
    await go(page, hash);
    await designed(page);
    const notice = await textOf(page, '.notice p');
    assert.ok(notice.endsWith(`: ${said}`), `${hash}: ${notice}`);
    // The host names each box anew.
    assert.deepEqual({ ...(await boxSettings(page)), name: fresh.name }, fresh, hash);
  }
  assert.equal(await page.$('main img, .notice img'), null);

  await t.test('leave what is right in them', async () => {
    await go(page, '#order=8&topology=bessel');
    assert.deepEqual((await boxSettings(page)).order, [8]);
    assert.match(await textOf(page, '.notice p'), /topology=bessel$/);
    await page.locator('.notice button').click();
    assert.equal(await textOf(page, '.notice p'), '');
  });

  await t.test('do no harm where they are long', async () => {
    await go(page, `#order=${'9'.repeat(100_000)}`);
    assert.match(await textOf(page, '.notice p'), /^The address is too long/);
    await go(page, `#topology=${'x'.repeat(3000)}`);
    const notice = await textOf(page, '.notice p');
    assert.ok(notice.length < 200 && notice.endsWith('…'), notice);
  });
});

void test('an address that no box takes begins with a fresh one', async (t) => {
  for (const [hash, reason] of [
    ['#response=bandpass&frequency=300', /two cutoffs/],
    ['#units=radians', /radians/],
  ]) {
    const page = await open(t, { hash: String(hash) });
    await page.waitForFunction(() => window.veltane.shown.value);
    assert.deepEqual((await boxSettings(page)).response, ['lowpass']);
    assert.match(await textOf(page, '.notice p'), /** @type {RegExp} */ (reason));
  }
});
