// For tests and for consoles: the page's parts.
import type { App } from './app.ts';

declare global {
  interface Window {
    veltane: App;
  }
}
