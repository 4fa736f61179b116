// Which order? The demand is drawn, and a candidate is taken.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { open } from './browser.js';
import { press } from './steps.js';

/** @typedef {import('puppeteer-core').Page} Page */
/** @typedef {import('../src/session/protocol.ts').Settings} Settings */

/**
 * @param {import('node:test').TestContext} t
 * @param {Settings} settings
 */
async function openWith(t, settings) {
  const page = await open(t, { width: 1600, height: 1000 });
  await page.evaluate((given) => {
    window.veltane.store.replace(given);
    window.veltane.store.settle();
  }, settings);
  await press(page, '#tab-order');
  await page.waitForSelector('.order tbody tr');
  await settle(page);
  return page;
}

/**
 * Waits until the session has no more to answer.
 * @param {Page} page
 */
async function settle(page) {
  for (let count = 0; count < 3; ++count) {
    await page.evaluate(() => window.veltane.patient.ask('describe', {}));
    await page.evaluate(() => new Promise((next) => requestAnimationFrame(next)));
  }
}

/**
 * @param {Page} page
 * @returns the numbers of the fields, by their labels
 */
async function demandIn(page) {
  const fields = await page.$$eval('.order .numbers label', (labels) =>
    labels.map((label) => {
      const value = Number(label.querySelector('input')?.value);
      return /** @type {const} */ ([label.querySelector('span')?.textContent ?? '', value]);
    }),
  );
  return /** @type {Record<string, number>} */ (Object.fromEntries(fields));
}

/** @param {Page} page */
const rowsIn = (page) =>
  page.$$eval('.order tbody tr', (rows) =>
    rows.map((row) => ({
      cells: [...row.cells].map((cell) => cell.firstChild?.textContent ?? ''),
      isRecommended: row.className === 'recommended',
    })),
  );

/**
 * @param {Page} page
 * @param {string} label  of a field
 * @param {number} value
 */
async function type(page, label, value) {
  const inputs = await page.$$('.order .numbers label');
  for (const input of inputs) {
    const text = await input.$eval('span', (span) => span.textContent);
    if (text !== label) continue;
    await input.$eval('input', (field) => field.select());
    await page.keyboard.type(String(value));
    await page.keyboard.press('Enter');
    await settle(page);
    return;
  }
  assert.fail(`no field ${label}`);
}

const lowpass = {
  topology: ['chebyshev-1'],
  order: [6],
  frequency: [2000],
  passband_ripple: [0.5],
};

test('it starts from the response of the filter, which meets its own demand', async (t) => {
  const page = await openWith(t, { topology: ['chebyshev-2'], stopband_attenuation: [60] });
  const demand = await demandIn(page);
  assert.equal(demand['Attenuation (dB)'], 60);
  assert.equal(demand['Stopband edge (Hz)'], 3000);
  const row = (await rowsIn(page)).find(({ cells }) => cells[0] === 'chebyshev-2');
  assert.equal(row?.cells[1], '5');
});

for (const response of ['lowpass', 'highpass', 'bandpass', 'bandstop'])
  test(`the demand of a ${response} has the order that it came from`, async (t) => {
    const frequency = response.startsWith('band') ? [800, 2500] : [2000];
    const page = await openWith(t, { ...lowpass, response: [response], frequency });
    const chosen = await page.$eval('.order select', (select) => select.value);
    assert.equal(chosen, response);
    const row = (await rowsIn(page)).find(({ cells }) => cells[0] === 'chebyshev-1');
    assert.equal(row?.cells[1], '6');
  });

test('an edge is dragged, and the orders follow', async (t) => {
  const page = await openWith(t, lowpass);
  const before = await demandIn(page);
  const orders = (await rowsIn(page)).map(({ cells }) => Number(cells[1]));
  const edge = await page.$('.order .handle[aria-label="Stopband edge"]');
  const box = await edge?.boundingBox();
  const surface = await (await page.$('.order .surface'))?.boundingBox();
  assert.ok(box && surface);
  const from = { x: box.x + box.width / 2, y: box.y + box.height * 0.8 };
  await page.mouse.move(from.x, from.y);
  await page.mouse.down();
  // Towards the passband, where the demand is harder.
  await page.mouse.move(from.x - surface.width / 12, from.y, { steps: 6 });
  await page.mouse.up();
  await settle(page);
  const after = await demandIn(page);
  assert.ok((after['Stopband edge (Hz)'] ?? NaN) < (before['Stopband edge (Hz)'] ?? NaN) * 0.9);
  assert.equal(after['Passband edge (Hz)'], before['Passband edge (Hz)']);
  const harder = (await rowsIn(page)).map(({ cells }) => Number(cells[1]));
  assert.ok(
    harder.every((order, index) => order > (orders[index] ?? Infinity)),
    harder.join(),
  );
});

for (const { response, frequency } of [
  { response: 'lowpass', frequency: [2000] },
  { response: 'bandpass', frequency: [995, 1005] },
  { response: 'bandstop', frequency: [995, 1005] },
  // At the left of their lines, where there is no space at the right.
  { response: 'bandpass', frequency: [14000, 19000] },
])
  test(`the frequencies of a ${response} at ${frequency.join()} Hz can be read`, async (t) => {
    const page = await openWith(t, { order: [8], response: [response], frequency });
    const labels = await page.$$eval('.order .handle.across', (lines) =>
      lines.map((line) => {
        const label = getComputedStyle(line, '::after');
        const { x, bottom } = line.getBoundingClientRect();
        const left = x + parseFloat(label.left);
        const low = bottom - parseFloat(label.bottom);
        const right = left + parseFloat(label.width);
        return { left, right, high: low - parseFloat(label.height), low };
      }),
    );
    assert.equal(labels.length, response === 'lowpass' ? 2 : 4);
    assert.ok(labels.every(({ left, right, high, low }) => right > left + 20 && low > high + 10));
    labels.forEach((one, index) => {
      for (const other of labels.slice(index + 1)) {
        const isBeside = one.right <= other.left || other.right <= one.left;
        const isAbove = one.low <= other.high || other.low <= one.high;
        assert.ok(isBeside || isAbove, JSON.stringify(labels));
      }
    });
  });

test('the curves of a narrow band go from one end of the picture to the other', async (t) => {
  const page = await openWith(t, {
    topology: ['chebyshev-2'],
    order: [8],
    response: ['bandpass'],
    frequency: [995, 1005],
  });
  const isDrawnAt = await page.evaluate(() => {
    // The first has the grid.
    const canvas = [...document.querySelectorAll('.order canvas')].at(-1);
    const inside = document.querySelector('.order .surface')?.getBoundingClientRect();
    if (!(canvas instanceof HTMLCanvasElement) || !inside) return [];
    const box = canvas.getBoundingClientRect();
    const scale = canvas.width / box.width;
    const context = canvas.getContext('2d');
    // Curves have a colour; the grid, the paper and what is forbidden hardly have one.
    return [0.01, 0.5, 0.95].map((place) => {
      const left = (inside.left - box.left + inside.width * place) * scale;
      const top = (inside.top - box.top) * scale;
      const [width, height] = [inside.width * 0.04 * scale, inside.height * scale];
      const { data } = context?.getImageData(left, top, width, height) ?? { data: [] };
      for (let at = 0; at < data.length; at += 4) {
        const colour = data.slice(at, at + 3);
        if (Math.max(...colour) - Math.min(...colour) > 60) return true;
      }
      return false;
    });
  });
  assert.deepEqual(isDrawnAt, [true, true, true]);
});

test('ripple and attenuation are dragged and moved by the keyboard', async (t) => {
  const page = await openWith(t, lowpass);
  const line = await page.$('.order .handle[aria-label="Attenuation"]');
  const box = await line?.boundingBox();
  assert.ok(box);
  const before = await demandIn(page);
  await page.mouse.move(box.x + box.width / 2, box.y + box.height / 2);
  await page.mouse.down();
  await page.mouse.move(box.x + box.width / 2, box.y + box.height / 2 - 30, { steps: 4 });
  await page.mouse.up();
  const dragged = (await demandIn(page))['Attenuation (dB)'] ?? NaN;
  assert.ok(dragged < (before['Attenuation (dB)'] ?? NaN) - 5, `${dragged}`);
  await page.focus('.order .handle[aria-label="Ripple"]');
  await page.keyboard.press('ArrowDown');
  const ripple = (await demandIn(page))['Ripple (dB)'];
  assert.equal(ripple, 0.55);
});

test('what is typed is the demand that is asked', async (t) => {
  const page = await openWith(t, lowpass);
  await type(page, 'Passband edge (Hz)', 1000);
  await type(page, 'Stopband edge (Hz)', 2000);
  await type(page, 'Ripple (dB)', 1);
  await type(page, 'Attenuation (dB)', 60);
  const found = await page.evaluate(() =>
    window.veltane.patient.ask('estimate', {
      response: 'lowpass',
      passband: [1000],
      stopband: [2000],
      ripple: 1,
      attenuation: 60,
      samplerate: 48000,
    }),
  );
  const rows = await rowsIn(page);
  assert.deepEqual(
    rows.map(({ cells, isRecommended }) => [cells[0], Number(cells[1]), isRecommended]),
    found.candidates.map((candidate) => [candidate.family, candidate.order, candidate.recommended]),
  );
  assert.equal(rows.filter(({ isRecommended }) => isRecommended).length, 1);
});

test('a family that cannot do it says why', async (t) => {
  const page = await openWith(t, lowpass);
  await type(page, 'Stopband edge (Hz)', 2020);
  await type(page, 'Passband edge (Hz)', 2000);
  await type(page, 'Attenuation (dB)', 200);
  const rows = await rowsIn(page);
  const butterworth = rows.find(({ cells }) => cells[0] === 'butterworth');
  assert.equal(butterworth?.cells.length, 2);
  assert.match(butterworth?.cells[1] ?? '', /order/);
});

test('one click takes a candidate, in one step to undo', async (t) => {
  const page = await openWith(t, { ...lowpass, units: ['normalized'], frequency: [0.1] });
  const before = await page.evaluate(() => window.veltane.store.state.value.settings);
  await type(page, 'Attenuation (dB)', 90);
  const row = (await rowsIn(page)).find(({ cells }) => cells[0] === 'butterworth');
  const demand = await demandIn(page);
  await page.locator('.order button[aria-label^="Take butterworth"]').click();
  await page.waitForFunction(
    () => window.veltane.shown.value?.design.settings['topology']?.[0] === 'butterworth',
  );
  const { settings, samplerate } = await page.evaluate(() => {
    const design = window.veltane.shown.value?.design;
    if (!design) throw new Error('no design');
    return { settings: design.settings, samplerate: design.samplerate };
  });
  assert.equal(settings['order']?.[0], Number(row?.cells[1]));
  assert.deepEqual(settings['units'], ['hertz']);
  // The box goes on following the rate of the audio.
  assert.deepEqual(settings['samplerate'], [0]);
  const edge = demand['Stopband edge (Hz)'] ?? NaN;
  const level = await page.evaluate(
    (at) => {
      const curve = window.veltane.shown.value?.panels.level?.curves[0];
      if (!curve) throw new Error('no level');
      const index = curve.x.findIndex((hertz) => hertz >= at);
      return Math.max(...curve.y.slice(index).filter((value) => !Number.isNaN(value)));
    },
    Math.min(edge, samplerate / 2),
  );
  assert.ok(level <= -90 + 0.01, `${level} dB in the stopband`);
  await page.evaluate(() => window.veltane.store.undo());
  assert.deepEqual(await page.evaluate(() => window.veltane.store.state.value.settings), before);
});

test('another response keeps the levels', async (t) => {
  const page = await openWith(t, lowpass);
  const before = await demandIn(page);
  await page.select('.order select', 'bandstop');
  await settle(page);
  const after = await demandIn(page);
  assert.equal(after['Attenuation (dB)'], before['Attenuation (dB)']);
  const edges = ['Passband from', 'Stopband from', 'Stopband to', 'Passband to'].map(
    (name) => after[`${name} (Hz)`] ?? NaN,
  );
  assert.ok(edges.every((hertz, index) => index === 0 || hertz > (edges[index - 1] ?? NaN)));
  assert.ok((await rowsIn(page)).some(({ isRecommended }) => isRecommended));
});
