// Light or dark: as the system says, or as the user chose.

import { keep, kept } from './state/kept.ts';
import { Signal } from './state/signal.ts';

export const themes = ['system', 'light', 'dark'] as const;
export type Theme = (typeof themes)[number];

/** What the user chose. */
export const chosenTheme = new Signal<Theme>(
  themes.find((theme) => theme === kept('theme')) ?? 'system',
);

/** What is shown; canvases are drawn anew when it changes. */
export const shownTheme = new Signal<'light' | 'dark'>('light');

export function followTheme(): void {
  const system = matchMedia('(prefers-color-scheme: dark)');
  const show = () => {
    const theme = chosenTheme.value;
    document.documentElement.style.colorScheme = theme === 'system' ? 'light dark' : theme;
    const shown = theme === 'system' ? (system.matches ? 'dark' : 'light') : theme;
    if (shown !== shownTheme.value) shownTheme.set(shown);
  };
  chosenTheme.follow((theme) => {
    keep('theme', theme);
    show();
  });
  system.addEventListener('change', show);
}
