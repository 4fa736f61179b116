// All that the page says, apart from what the module and the session say themselves.

import type { Theme } from './theme.ts';

export const strings = {
  title: 'veltane',
  loading: 'Loading…',
  cannotStart: (reason: string) => `The page cannot start: ${reason}`,
  counts: (changes: number, designs: number, microseconds: number) =>
    `${changes} changes, ${designs} designs, ${Math.round(microseconds)} µs`,
  header: {
    tools: 'Page',
    undo: 'Undo',
    undoTitle: 'Undo (Ctrl+Z)',
    redo: 'Redo',
    redoTitle: 'Redo (Ctrl+Shift+Z)',
    link: 'Copy link',
    linkWhat: 'a link to this filter',
    themeTitle: 'System, light or dark colours',
    theme: (theme: Theme) => ({ system: 'Auto', light: 'Light', dark: 'Dark' })[theme],
    countsTitle: 'Changes made, filters designed, and the time of the last design with its curves',
  },
  layout: {
    inspector: 'Settings',
    pictures: 'Pictures',
    verdict: 'Verdict',
    tools: 'Tools',
    dismiss: 'Dismiss',
  },
  inspector: {
    noCategory: 'Other',
    edges: ['lower', 'upper'] as readonly string[],
    reset: (label: string) => `${label}: as in a fresh box`,
    notNumber: (text: string) => `"${text}" is not a number here; the value before is used.`,
    doubtful: (text: string) =>
      `"${text}" may be one number or two: write a point, or the unit behind each.`,
    tooMany: (label: string, most: number) =>
      `${label} takes at most ${most} ${most === 1 ? 'number' : 'numbers'}.`,
    whole: (label: string) => `${label} takes whole numbers.`,
    followsAudio: 'follows the audio',
    refused: (reason: string) => `${reason}; the filter before is shown`,
  },
  copy: {
    title: (what: string) => `Copy ${what}`,
    copied: 'Copied',
    done: (what: string) => `Copied ${what}.`,
    failedShort: 'Not copied',
    failed: 'The browser does not let the page copy.',
  },
  link: {
    tooLong: 'The address is too long to be a filter of this page: a fresh box is used instead.',
    wrong: (words: string) =>
      `The address has settings that cannot be used, and a fresh box's are used instead: ${words}`,
    refused: (reason: string) =>
      `The address is no filter, and a fresh box is used instead: ${reason}.`,
  },
} as const;
