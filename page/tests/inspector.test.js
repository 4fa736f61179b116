// The controls of the box's attributes.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { open } from './browser.js';
import { begin, boxSettings, designed, textOf, type, valueOf } from './steps.js';

/** @param {string} name */
const field = (name) => `#inspector input[name="${name}"]`;
/** @param {string} label */
const sliderOf = (label) => `#inspector [role="slider"][aria-label="${label}"]`;

void test('the inspector', async (t) => {
  const page = await open(t);

  await t.test('has a control for each attribute, which sets it', async () => {
    const attributes = await page.evaluate(() => window.veltane.description.attributes);
    await page.evaluate(() => {
      for (const group of document.querySelectorAll('details')) group.open = true;
    });
    for (const { name, properties, type: kind, lowest, highest } of attributes) {
      await begin(page, { topology: ['chebyshev-1'] });
      // Radians are refused, and an attribute that is out of use takes nothing.
      if (name === 'stopband_attenuation') await begin(page);
      if (properties.enumvals) {
        for (const choice of properties.enumvals.filter((value) => value !== 'radians')) {
          await page.locator(`${field(name)}[value="${choice}"]`).click();
          assert.deepEqual((await boxSettings(page))[name], [choice]);
        }
      } else if (properties.style?.[0] === 'onoff') {
        const before = Number((await boxSettings(page))[name]?.[0]);
        await page.locator(field(name)).click();
        assert.deepEqual((await boxSettings(page))[name], [1 - before]);
      } else {
        const typed =
          kind === 'symbol'
            ? 'mine'
            : String(Math.round(lowest === undefined ? 4567 : (lowest + (highest ?? 0)) / 3));
        await type(page, field(name), typed);
        const [value] = (await boxSettings(page))[name] ?? [];
        assert.equal(String(value), typed, name);
      }
    }
  });

  await t.test('shows labels, categories and choices of the class', async () => {
    const shown = await page.$$eval('#inspector .inspector > details', (groups) =>
      groups.map((group) => [
        group.querySelector('summary')?.textContent,
        [...group.querySelectorAll('.label')].map((label) => label.firstChild?.textContent),
      ]),
    );
    const attributes = await page.evaluate(() => window.veltane.description.attributes);
    for (const [category, labels] of shown) {
      const declared = attributes.filter(({ properties }) => properties.category?.[0] === category);
      assert.deepEqual(
        labels,
        declared.map(({ properties }) => properties.label?.[0]),
      );
    }
    assert.equal(shown.flatMap(([, labels]) => labels).length, attributes.length);
    assert.equal(shown[0]?.[0], 'Filter');
  });

  await t.test('understands numbers as people type them', async () => {
    for (const [typed, meant] of /** @type {const} */ ([
      ['3k', 3000],
      ['2.5 kHz', 2500],
      ['1e3', 1000],
      ['  440 hz ', 440],
      ['.5k', 500],
    ])) {
      await begin(page);
      await type(page, field('frequency'), typed);
      assert.deepEqual((await boxSettings(page)).frequency, [meant], typed);
      assert.equal(await valueOf(page, field('frequency')), String(meant));
    }
    for (const [typed, meant] of /** @type {const} */ ([
      ['300,3400', [300, 3400]],
      ['300 3.4k', [300, 3400]],
      ['0.3 kHz to 3.4 kHz', [300, 3400]],
    ])) {
      await begin(page, { response: ['bandpass'] });
      await type(page, field('frequency'), typed);
      assert.deepEqual((await boxSettings(page)).frequency, meant, typed);
    }
  });

  await t.test('says what it does not understand, and keeps the value before', async () => {
    for (const typed of ['abc', '3 dB', '3,4kHz', '3m', '1,2,3', '<b>1</b>', '1e999', '3 k4']) {
      await begin(page);
      await type(page, field('frequency'), typed);
      assert.deepEqual((await boxSettings(page)).frequency, [3000], typed);
      assert.notEqual(await textOf(page, '#wrong-frequency'), '', typed);
      assert.equal(
        await page.$eval(field('frequency'), (f) => f.getAttribute('aria-invalid')),
        'true',
      );
    }
    await type(page, field('frequency'), '500');
    assert.equal(await textOf(page, '#wrong-frequency'), '');
    await type(page, field('order'), '4.5');
    assert.match(await textOf(page, '#wrong-order'), /whole numbers/);
    assert.equal(await page.$('#inspector b'), null);
  });

  await t.test('shows a value that the box changed as it is used, with the remark', async () => {
    await begin(page);
    await type(page, field('order'), '300');
    await designed(page);
    assert.equal(await valueOf(page, field('order')), '200');
    assert.match(await textOf(page, '#remark-order'), /200 is used, not 300/);
    await begin(page);
    assert.equal(await textOf(page, '#remark-order'), '');
    await type(page, field('frequency'), '99k');
    await designed(page);
    assert.match(await textOf(page, '#remark-frequency'), /23997.6 Hz is used/);
    await begin(page);
    await page.locator(`${field('units')}[value="radians"]`).click();
    await page.waitForFunction(() => window.veltane.refusal.value !== '');
    assert.match(await textOf(page, '#remark-units'), /radians/);
  });

  await t.test('steps by arrows and wheel, further with Shift and less far with Alt', async () => {
    await begin(page);
    await page.focus(field('order'));
    await page.keyboard.press('ArrowUp');
    assert.deepEqual((await boxSettings(page)).order, [6]);
    await page.keyboard.down('Shift');
    await page.keyboard.press('ArrowUp');
    await page.keyboard.up('Shift');
    assert.deepEqual((await boxSettings(page)).order, [16]);
    await page.focus(field('frequency'));
    await page.keyboard.press('ArrowDown');
    assert.deepEqual((await boxSettings(page)).frequency, [2900]);
    await page.keyboard.down('Alt');
    await page.keyboard.press('ArrowUp');
    await page.keyboard.up('Alt');
    assert.deepEqual((await boxSettings(page)).frequency, [2910]);
    await page.hover(field('frequency'));
    await page.mouse.wheel({ deltaY: -100 });
    await page.waitForFunction(() => window.veltane.settings().frequency?.[0] === 3010);
    await page.focus(field('order'));
    await page.mouse.wheel({ deltaY: -100 });
    assert.deepEqual((await boxSettings(page)).frequency, [3010], 'a field that nobody is in');
    // A step down and up again leads back, across powers of ten, too.
    await begin(page, { frequency: [1000] });
    await page.focus(field('frequency'));
    await page.keyboard.press('ArrowDown');
    assert.deepEqual((await boxSettings(page)).frequency, [990]);
    await page.keyboard.press('ArrowUp');
    assert.deepEqual((await boxSettings(page)).frequency, [1000]);
  });

  await t.test('has sliders for pointers and keys', async () => {
    await begin(page);
    const slider = sliderOf('Order');
    const box = await (await page.$(slider))?.boundingBox();
    assert.ok(box);
    const middle = box.y + box.height / 2;
    await page.mouse.move(box.x + 2, middle);
    await page.mouse.down();
    await page.mouse.move(box.x + box.width / 2, middle, { steps: 5 });
    await page.mouse.move(box.x + 5 * box.width, middle, { steps: 5 });
    await page.mouse.up();
    assert.deepEqual((await boxSettings(page)).order, [200]);
    await page.locator('header button[title^="Undo"]').click();
    assert.deepEqual((await boxSettings(page)).order, [5], 'a drag is one step');
    for (const part of [0.4, 0.7]) {
      await page.mouse.move(box.x + part * box.width, middle);
      await page.mouse.down();
      await page.mouse.up();
    }
    await page.locator('header button[title^="Undo"]').click();
    const [first] = (await boxSettings(page)).order ?? [];
    assert.ok(Number(first) > 5 && Number(first) < 20, `${first} after the first of two drags`);
    await begin(page);
    await page.focus(slider);
    await page.keyboard.press('ArrowRight');
    await page.keyboard.press('PageUp');
    assert.deepEqual((await boxSettings(page)).order, [16]);
    await page.keyboard.press('Home');
    assert.deepEqual((await boxSettings(page)).order, [2]);
    const said = await page.$eval(sliderOf('Cutoff Frequencies, lower'), (found) =>
      ['valuemin', 'valuemax', 'valuenow', 'valuetext'].map((name) =>
        found.getAttribute(`aria-${name}`),
      ),
    );
    assert.deepEqual(said, ['2.4', '23997.6', '3000', '3000 Hz']);
    await page.evaluate(
      (selector) =>
        document
          .querySelector(selector)
          ?.dispatchEvent(new MouseEvent('dblclick', { bubbles: true })),
      slider,
    );
    assert.deepEqual((await boxSettings(page)).order, [5]);
  });

  await t.test('has two cutoffs where the response takes two, which do not cross', async () => {
    const shownFields = () =>
      page.$$eval(field('frequency'), (fields) =>
        fields
          .filter((one) => one.checkVisibility())
          .map((one) => /** @type {HTMLInputElement} */ (one).value),
      );
    await begin(page, { frequency: [1000] });
    assert.deepEqual(await shownFields(), ['1000']);
    await page.locator(`${field('response')}[value="bandpass"]`).click();
    await designed(page);
    assert.deepEqual(await shownFields(), ['1000', '2000']);
    await page.focus(sliderOf('Cutoff Frequencies, lower'));
    await page.keyboard.press('End');
    assert.deepEqual((await boxSettings(page)).frequency, [1000, 2000]);
    await page.locator(`${field('response')}[value="highpass"]`).click();
    await designed(page);
    assert.deepEqual(await shownFields(), ['1000']);
    assert.equal(await textOf(page, '#remark-frequency'), '');
  });

  await t.test('disables what the box has out of use', async () => {
    for (const [topology, ripple, attenuation] of /** @type {const} */ ([
      ['chebyshev-1', false, true],
      ['chebyshev-2', true, false],
      ['butterworth', true, true],
    ])) {
      await page.locator(`${field('topology')}[value="${topology}"]`).click();
      await designed(page);
      const isDisabled = (/** @type {string} */ name) =>
        page.$eval(field(name), (found) => /** @type {HTMLInputElement} */ (found).disabled);
      assert.equal(await isDisabled('passband_ripple'), ripple);
      assert.equal(await isDisabled('stopband_attenuation'), attenuation);
    }
  });
});

void test('a new attribute appears by itself', async (t) => {
  const page = await open(t, {
    before: async (made) => {
      await made.evaluateOnNewDocument(() => {
        /** @type {(text: string) => unknown} */
        const parse = JSON.parse.bind(JSON);
        JSON.parse = (text) => {
          const answer = /** @type {{ attributes?: object[], fresh: object }} */ (parse(text));
          if (answer.attributes) {
            Object.assign(answer.fresh, { warp: [3], shape: ['round'] });
            answer.attributes.push(
              {
                name: 'warp',
                type: 'float64',
                maximum: 1,
                lowest: 1,
                highest: 5,
                properties: { label: ['Warp Factor'], category: ['New'] },
              },
              {
                name: 'shape',
                type: 'symbol',
                maximum: 1,
                properties: { style: ['enum'], enumvals: ['round', 'flat'], category: ['New'] },
              },
            );
          }
          return answer;
        };
      });
    },
  });
  const labels = await page.$$eval('#inspector [aria-label="Warp Factor"]', (found) =>
    found.map((one) => one.getAttribute('role') ?? one.tagName),
  );
  assert.deepEqual(labels, ['group', 'INPUT', 'slider']);
  await page.locator(`${field('shape')}[value="flat"]`).click();
  assert.deepEqual(await page.evaluate(() => window.veltane.settings().shape), ['flat']);
});

void test('groups stay as they are folded', async (t) => {
  const page = await open(t);
  const folded = () =>
    page.$$eval('#inspector details', (all) =>
      all
        .filter((group) => !group.open)
        .map((group) => group.querySelector('summary')?.textContent),
    );
  assert.deepEqual(await folded(), ['Dictionary']);
  await page.locator('#inspector details:nth-of-type(2) > summary').click();
  await page.evaluate(() => new Promise((done) => setTimeout(done, 50)));
  await page.reload();
  await page.waitForFunction(() => 'veltane' in window && window.veltane.shown.value);
  assert.deepEqual(await folded(), ['Behavior', 'Dictionary']);
});

void test('undo and redo', async (t) => {
  const page = await open(t);
  await begin(page, { order: [6] });
  /** @param {string} key @param {'Shift'} [shift] */
  const control = async (key, shift) => {
    await page.keyboard.down('Control');
    if (shift) await page.keyboard.down(shift);
    await page.keyboard.press(/** @type {import('puppeteer-core').KeyInput} */ (key));
    if (shift) await page.keyboard.up(shift);
    await page.keyboard.up('Control');
  };
  const order = async () => (await boxSettings(page)).order?.[0];
  await type(page, field('order'), '8');
  assert.equal(await order(), 8);
  // Nothing is typed that the field could take back.
  await control('z');
  assert.equal(await order(), 6);
  assert.equal(await valueOf(page, field('order')), '6');
  await control('z', 'Shift');
  assert.equal(await order(), 8);
  await control('z');
  await control('y');
  assert.equal(await order(), 8);
  await page.keyboard.type('123');
  await control('z');
  assert.equal(await order(), 8, 'the field takes back what was typed in it');
  await page.keyboard.press('Escape');
  await page.locator('header button[title^="Undo"]').click();
  assert.equal(await order(), 6);
  await page.locator('header button[title^="Redo"]').click();
  assert.equal(await order(), 8);
  assert.ok(await page.$eval('header button[title^="Redo"]', (b) => b.matches(':disabled')));
});
