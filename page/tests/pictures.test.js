// The pictures: cutoffs are dragged, a range is zoomed, and what is read is the response.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { open } from './browser.js';

/** @typedef {import('puppeteer-core').Page} Page */

const wide = { width: 1920, height: 1080 };

/**
 * Waits until what was set is drawn.
 * @param {Page} page
 */
async function settle(page) {
  await page.evaluate(async () => {
    const frame = () => new Promise((next) => requestAnimationFrame(next));
    let before;
    do {
      before = window.veltane.counts.value.designs;
      for (let count = 0; count < 6; ++count) await frame();
    } while (window.veltane.counts.value.designs !== before);
  });
}

/**
 * @param {import('node:test').TestContext} t
 * @param {import('../src/session/protocol.ts').Settings} settings
 */
async function openWith(t, settings) {
  const page = await open(t, wide);
  await page.waitForSelector('.picture[data-panel="level"] .cutoff');
  await page.evaluate((given) => {
    window.veltane.store.replace(given);
    window.veltane.store.settle();
  }, settings);
  await settle(page);
  return page;
}

/**
 * @param {Page} page
 * @param {string} selector
 */
async function boxOf(page, selector) {
  const box = await (await page.waitForSelector(selector))?.boundingBox();
  assert.ok(box, selector);
  return box;
}

/** @param {Page} page */
const axisOf = (page) => page.evaluate(() => window.veltane.shown.value?.panels.level?.x);

/** @param {Page} page */
const frequencyOf = (page) =>
  page.evaluate(() => window.veltane.settings()['frequency']?.map(Number));

/**
 * The response of the published sections at one frequency: level in dB, and phase in degrees from
 * -180 to 180.
 * @param {Page} page
 * @param {number} hertz
 */
async function responseAt(page, hertz) {
  return page.evaluate((at) => {
    const design = window.veltane.shown.value?.design;
    if (!design) throw new Error('no design');
    const cascade = /** @type {number[]} */ (
      design.dictionary.find(([key]) => key === 'cascade')?.[1]
    );
    const angle = (2 * Math.PI * at) / design.samplerate;
    let [real, imaginary] = [1, 0];
    /** @param {number[]} polynomial  @returns {[number, number]} */
    const value = (polynomial) => {
      let sum = /** @type {[number, number]} */ ([0, 0]);
      polynomial.forEach((coefficient, power) => {
        sum = [
          sum[0] + coefficient * Math.cos(power * angle),
          sum[1] - coefficient * Math.sin(power * angle),
        ];
      });
      return sum;
    };
    for (let first = 0; first < cascade.length; first += 5) {
      const [b0 = 0, b1 = 0, b2 = 0, a1 = 0, a2 = 0] = cascade.slice(first, first + 5);
      const [nr, ni] = value([b0, b1, b2]);
      const [dr, di] = value([1, a1, a2]);
      const size = dr * dr + di * di;
      const [qr, qi] = [(nr * dr + ni * di) / size, (ni * dr - nr * di) / size];
      [real, imaginary] = [real * qr - imaginary * qi, real * qi + imaginary * qr];
    }
    return {
      level: 20 * Math.log10(Math.hypot(real, imaginary)),
      phase: (Math.atan2(imaginary, real) * 180) / Math.PI,
    };
  }, hertz);
}

/**
 * What the line of the crosshair says, as numbers in Hz, dB, degrees and ms.
 * @param {Page} page
 */
async function readingOf(page) {
  const texts = await page.$$eval('.picture-readout b', (values) =>
    values.map((value) => (value.textContent ?? '').replaceAll('−', '-')),
  );
  const scale = texts[0]?.includes('kHz') ? 1000 : 1;
  const [frequency = NaN, level = NaN, phase = NaN, delay = NaN] = texts.map(parseFloat);
  return { frequency: frequency * scale, level, phase, delay, texts };
}

/** Whether a canvas of a panel shows more than its ground. @param {Page} page */
const paintedPanels = (page) =>
  page.$$eval('.picture:not([hidden])', (panels) =>
    panels
      .filter((panel) => {
        const canvas = /** @type {HTMLCanvasElement | null} */ (
          panel.querySelector('.plot > canvas, .curves')
        );
        const pixels = canvas
          ?.getContext('2d')
          ?.getImageData(0, 0, canvas.width, canvas.height).data;
        return pixels?.some((value) => value !== 0);
      })
      .map((panel) => panel.getAttribute('data-panel')),
  );

const lowpass = { topology: ['butterworth'], order: [4], frequency: [1000] };
const bandpass = { ...lowpass, response: ['bandpass'], frequency: [300, 3400] };

test('all panels are drawn, and the difference only beside a pinned filter', async (t) => {
  const page = await openWith(t, lowpass);
  const usual = ['level', 'passband', 'phase', 'delay', 'zeros_and_poles', 'poles'];
  assert.deepEqual(await paintedPanels(page), [...usual, 'impulse', 'step']);
  await page.evaluate(() => window.veltane.store.change({ other: { order: [3] } }));
  await settle(page);
  assert.ok((await paintedPanels(page)).includes('difference'));
});

test('a cutoff is dragged in one step to undo', async (t) => {
  const page = await openWith(t, lowpass);
  const axis = await axisOf(page);
  assert.ok(axis);
  const surface = await boxOf(page, '.picture[data-panel="level"] .surface');
  const line = await boxOf(page, '.picture[data-panel="level"] .cutoff');
  const from = { x: line.x + line.width / 2, y: line.y + line.height / 2 };
  await page.mouse.move(from.x, from.y);
  await page.mouse.down();
  const way = surface.width / 10;
  await page.mouse.move(from.x + way, from.y, { steps: 8 });
  await settle(page);
  const expected = 1000 * (axis.high / axis.low) ** 0.1;
  const [dragged = NaN] = (await frequencyOf(page)) ?? [];
  assert.ok(Math.abs(dragged / expected - 1) < 0.02, `${dragged} instead of ${expected}`);
  await page.mouse.up();
  await page.evaluate(() => window.veltane.store.undo());
  assert.deepEqual(await frequencyOf(page), [1000]);
});

test('the keyboard moves a cutoff, in the units of the box', async (t) => {
  const page = await openWith(t, { ...lowpass, units: ['normalized'], frequency: [0.25] });
  await page.focus('.picture[data-panel="level"] .cutoff');
  await page.keyboard.press('ArrowRight');
  await settle(page);
  assert.deepEqual(await frequencyOf(page), [0.2525]);
  const text = await page.$eval('.picture[data-panel="level"] .cutoff', (line) =>
    line.getAttribute('aria-valuetext'),
  );
  assert.equal(text, '6.06 kHz');
});

test('both cutoffs of a band are moved, and do not pass each other', async (t) => {
  const page = await openWith(t, bandpass);
  const lines = await page.$$('.picture[data-panel="level"] .cutoff:not([hidden])');
  assert.equal(lines.length, 2);
  await lines[1]?.focus();
  await page.keyboard.press('ArrowLeft');
  await settle(page);
  assert.deepEqual(await frequencyOf(page), [300, 3366]);
  await lines[0]?.focus();
  for (let count = 0; count < 20; ++count) {
    await page.keyboard.press('PageUp');
    await settle(page);
  }
  const [low = NaN, high = NaN] = (await frequencyOf(page)) ?? [];
  assert.ok(low > 3300 && low < high, `${low} and ${high}`);
});

test('what the crosshair reads is the response at that frequency', async (t) => {
  const page = await openWith(t, bandpass);
  const surface = await boxOf(page, '.picture[data-panel="phase"] .surface');
  for (const place of [0.11, 0.2, 0.27, 0.45, 0.52, 0.7, 0.83]) {
    await page.mouse.move(surface.x + surface.width * place, surface.y + 20);
    await settle(page);
    const reading = await readingOf(page);
    const expected = await responseAt(page, reading.frequency);
    assert.ok(Math.abs(reading.level - expected.level) < 0.02, JSON.stringify([reading, expected]));
    const turns = (reading.phase - expected.phase) / 360;
    assert.ok(Math.abs(turns - Math.round(turns)) * 360 < 0.5, JSON.stringify([reading, expected]));
    const [below, above] = [reading.frequency * 0.999, reading.frequency * 1.001];
    const phases = [await responseAt(page, below), await responseAt(page, above)];
    const fall = (((phases[0]?.phase ?? NaN) - (phases[1]?.phase ?? NaN) + 540) % 360) - 180;
    const delay = (fall / 360 / (above - below)) * 1000;
    assert.match(reading.texts[3] ?? '', / ms$/);
    assert.ok(Math.abs(reading.delay / delay - 1) < 0.01, `${reading.delay} and ${delay}`);
  }
  await page.mouse.move(2, 2);
  assert.equal((await readingOf(page)).texts[0], '');
});

test('the keyboard moves the crosshair, and says what it reads', async (t) => {
  const page = await openWith(t, lowpass);
  await page.focus('.picture[data-panel="level"] .surface');
  await page.keyboard.press('End');
  await page.keyboard.press('ArrowLeft');
  await settle(page);
  const axis = await axisOf(page);
  assert.ok(axis);
  const expected = axis.high * (axis.low / axis.high) ** 0.01;
  assert.ok(Math.abs((await readingOf(page)).frequency / expected - 1) < 1e-3);
  const status = await page.$eval('#status', (element) => element.textContent);
  assert.match(status ?? '', /kHz, Level −/);
});

test('the wheel zooms about the pointer, in all panels, and a double click zooms back', async (t) => {
  const page = await openWith(t, lowpass);
  const whole = await axisOf(page);
  assert.ok(whole);
  const surface = await boxOf(page, '.picture[data-panel="level"] .surface');
  await page.mouse.move(surface.x + surface.width * 0.5, surface.y + surface.height / 2);
  await page.mouse.wheel({ deltaY: -200 });
  await settle(page);
  const zoomed = await axisOf(page);
  assert.ok(zoomed);
  const length = Math.log(zoomed.high / zoomed.low) / Math.log(whole.high / whole.low);
  assert.ok(Math.abs(length - 0.5) < 0.01, `${length}`);
  const middle = Math.sqrt(zoomed.high * zoomed.low) / Math.sqrt(whole.high * whole.low);
  assert.ok(Math.abs(middle - 1) < 0.02, `${middle}`);
  const others = await page.evaluate(() => {
    const panels = window.veltane.shown.value?.panels;
    return [panels?.phase?.x, panels?.delay?.x];
  });
  assert.deepEqual(others, [zoomed, zoomed]);
  await page.mouse.down();
  await page.mouse.move(surface.x + surface.width * 0.6, surface.y + 40, { steps: 4 });
  await page.mouse.up();
  await settle(page);
  const panned = await axisOf(page);
  assert.ok(panned && panned.low < zoomed.low && panned.high < zoomed.high);
  await page.mouse.click(surface.x + surface.width * 0.3, surface.y + 60, { count: 2 });
  await settle(page);
  assert.deepEqual(await axisOf(page), whole);
});

test('the keyboard zooms and pans, and 0 shows all', async (t) => {
  const page = await openWith(t, lowpass);
  const whole = await axisOf(page);
  await page.focus('.picture[data-panel="delay"] .surface');
  await page.keyboard.press('+');
  await settle(page);
  const zoomed = await axisOf(page);
  assert.ok(whole && zoomed && zoomed.low > whole.low && zoomed.high < whole.high);
  await page.keyboard.down('Shift');
  await page.keyboard.press('ArrowRight');
  await page.keyboard.up('Shift');
  await settle(page);
  const panned = await axisOf(page);
  assert.ok(panned && panned.low > zoomed.low && panned.high > zoomed.high);
  await page.keyboard.press('0');
  await settle(page);
  assert.deepEqual(await axisOf(page), whole);
});

test('two fingers pinch', async (t) => {
  const page = await openWith(t, lowpass);
  const whole = await axisOf(page);
  assert.ok(whole);
  const surface = await boxOf(page, '.picture[data-panel="level"] .surface');
  const y = surface.y + surface.height * 0.7;
  const at = (/** @type {number} */ place) => surface.x + surface.width * place;
  const left = await page.touchscreen.touchStart(at(0.1), y);
  const right = await page.touchscreen.touchStart(at(0.3), y);
  await left.move(at(0.05), y);
  await right.move(at(0.45), y);
  await left.end();
  await right.end();
  await settle(page);
  const zoomed = await axisOf(page);
  assert.ok(zoomed);
  const length = Math.log(zoomed.high / zoomed.low) / Math.log(whole.high / whole.low);
  assert.ok(Math.abs(length - 0.5) < 0.02, `${length}`);
});

test('a linear axis and a wrapped phase', async (t) => {
  const page = await openWith(t, { ...lowpass, order: [12] });
  const low = () =>
    page.evaluate(() => {
      const phase = window.veltane.shown.value?.panels.phase?.curves[0]?.y ?? [];
      return Math.min(...phase.filter((degrees) => !Number.isNaN(degrees)));
    });
  assert.ok((await low()) < -360);
  await page.evaluate(() => {
    for (const button of document.querySelectorAll('.picture-tools button'))
      if (button instanceof HTMLElement && /^(Logarithmic|Wrapped)$/.test(button.innerText))
        button.click();
  });
  await settle(page);
  assert.ok((await low()) >= -180.001);
  const axis = await axisOf(page);
  assert.equal(axis?.logarithmic, false);
  assert.equal(axis?.low, 0);
});

test('a closed panel is not asked for, and stays closed', async (t) => {
  const page = await openWith(t, lowpass);
  await page.locator('.picture[data-panel="delay"] button[aria-label^="Close"]').click();
  await settle(page);
  const delay = () => page.evaluate(() => window.veltane.shown.value?.panels.delay === undefined);
  assert.ok(await delay());
  await page.locator('.picture[data-panel="impulse"] button[aria-label^="Enlarge"]').click();
  await page.reload();
  await page.waitForSelector('.picture[data-panel="impulse"].enlarged');
  assert.equal(await page.$('.picture[data-panel="delay"]:not([hidden])'), null);
});

test('panels out of sight are not asked for', async (t) => {
  const page = await open(t, { width: 360, height: 640 });
  const nothing = await page.evaluate(() => window.veltane.panels.value);
  assert.deepEqual(nothing, []);
  await page.$eval('.picture[data-panel="level"]', (panel) => panel.scrollIntoView());
  await page.waitForSelector('.picture[data-panel="level"] .cutoff');
  await settle(page);
  const asked = await page.evaluate(() => window.veltane.panels.value);
  assert.ok(asked.includes('level') && !asked.includes('step'), asked.join());
  await page.$eval('.picture[data-panel="step"]', (panel) => panel.scrollIntoView());
  await settle(page);
  const then = await page.evaluate(() => window.veltane.panels.value);
  assert.ok(then.includes('step') && !then.includes('level'), then.join());
});

test('what a level has to stay out of is shaded, and what it comes to is said', async (t) => {
  const page = await openWith(t, {
    topology: ['chebyshev-2'],
    frequency: [3000],
    stopband_attenuation: [80],
  });
  /** The colour of the picture where nothing but the mask may lie. @param {number} hertz */
  const colourAt = (hertz) =>
    page.evaluate((at) => {
      const axis = window.veltane.shown.value?.panels.level?.x;
      const canvas = document.querySelector('.picture[data-panel="level"] .curves');
      const surface = document.querySelector('.picture[data-panel="level"] .surface');
      if (!axis || !surface || !(canvas instanceof HTMLCanvasElement)) throw new Error('no level');
      const [inside, all] = [surface.getBoundingClientRect(), canvas.getBoundingClientRect()];
      const place = Math.log(at / axis.low) / Math.log(axis.high / axis.low);
      const x = inside.left - all.left + place * inside.width;
      const y = inside.top - all.top + inside.height * 0.55;
      const pixel = canvas.getContext('2d')?.getImageData(Math.round(x), Math.round(y), 1, 1).data;
      return [...(pixel ?? [])].join();
    }, hertz);
  const nothing = await colourAt(650);
  assert.equal(await colourAt(2550), nothing);
  const shaded = await colourAt(3550);
  assert.notEqual(shaded, nothing);
  assert.equal(await colourAt(15500), shaded);
  const note = await page.$eval('.picture[data-panel="level"] .note', (text) => text.textContent);
  assert.match(note ?? '', /^−80 dB asked, −80\.00 dB reached/);
});

test('a root is read by the pointer and by the keyboard', async (t) => {
  const page = await openWith(t, { ...lowpass, order: [2] });
  await page.focus('.picture[data-panel="poles"] .plot');
  await page.keyboard.press('Home');
  const text = await page.$eval(
    '.picture[data-panel="poles"] .reading',
    (line) => line.textContent,
  );
  const pole = await page.evaluate(() => {
    const poles = window.veltane.shown.value?.design.dictionary.find(([key]) => key === 'poles');
    const [x = NaN, y = NaN] = /** @type {number[]} */ (poles?.[1] ?? []);
    return { radius: Math.hypot(x, y), hertz: (Math.atan2(Math.abs(y), x) / Math.PI) * 24000 };
  });
  const [, radius, hertz] = /radius ([\d.]+), ([\d.]+) Hz$/.exec(text ?? '') ?? [];
  assert.ok(Math.abs(Number(radius) - pole.radius) < 1e-4, `${text} ${JSON.stringify(pole)}`);
  assert.ok(Math.abs(Number(hertz) - pole.hertz) < 0.1, `${text} ${JSON.stringify(pole)}`);
});

test('pictures say in words what they show', async (t) => {
  const page = await openWith(t, {
    topology: ['chebyshev-2'],
    order: [5],
    frequency: [3000],
    stopband_attenuation: [96],
  });
  await page.waitForFunction(() =>
    document
      .querySelector('.picture[data-panel="level"] [role="img"]')
      ?.getAttribute('aria-label')
      ?.includes('574.7 Hz'),
  );
  const words = await page.$eval('.picture[data-panel="level"] [role="img"]', (image) =>
    image.getAttribute('aria-label'),
  );
  assert.match(words ?? '', /at most −96\.00 dB from 3 kHz to 24 kHz/);
  const labels = await page.$$eval('.picture [role="img"]', (images) =>
    images
      .filter((image) => image.checkVisibility())
      .map((image) => image.getAttribute('aria-label')),
  );
  assert.ok(
    labels.every((label) => label && label.length > 20),
    JSON.stringify(labels),
  );
});

test('pictures follow the theme', async (t) => {
  const page = await openWith(t, lowpass);
  const pixels = () =>
    page.$eval('.picture[data-panel="level"] .curves', (canvas) =>
      /** @type {HTMLCanvasElement} */ (canvas).toDataURL(),
    );
  await page.emulateMediaFeatures([{ name: 'prefers-color-scheme', value: 'light' }]);
  await settle(page);
  const light = await pixels();
  await page.emulateMediaFeatures([{ name: 'prefers-color-scheme', value: 'dark' }]);
  await settle(page);
  assert.notEqual(await pixels(), light);
});
