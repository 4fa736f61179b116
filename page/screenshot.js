// Makes a picture of the page: node screenshot.js OUTPUT.png.

import process from 'node:process';
import { pathToFileURL } from 'node:url';
import { file, launched } from './tests/browser.js';

const [output = 'page.png'] = process.argv.slice(2);
const { browser, end } = await launched();
const page = await browser.newPage();
await page.setViewport({ width: 1440, height: 810 });
await page.goto(`${pathToFileURL(file).href}#response=bandpass&frequency=300,3400`);
await page.waitForFunction(
  () => 'veltane' in window && document.querySelector('#tools')?.textContent?.includes('Sound'),
);
// Texts beside the pictures follow when a dial rests.
await new Promise((done) => setTimeout(done, 1000));
await page.screenshot({ path: output });
await end();
