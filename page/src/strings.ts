// All that the page says, apart from what the module and the session say themselves.

import type { Weight } from './session/protocol.ts';
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
    theme: (theme: Theme) => `Theme: ${theme === 'system' ? 'auto' : theme}`,
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
    zeroFollows: (rate: number) => `0 follows the audio, here ${rate} Hz`,
    refused: (reason: string) => `${reason}; the filter before is shown`,
  },
  keep: {
    title: 'Open, save and repeat',
    open: 'Open…',
    openTitle: 'Open a saved design; one can also be dropped anywhere onto the page',
    save: 'Save as JSON',
    saveTitle: 'Save settings and coefficients, as "veltane design --format json" does',
    copy: 'Copy',
    command: 'the command that makes this',
    opened: (name: string) => `Opened '${name}'.`,
    tooLarge: (name: string) => `'${name}' is larger than any saved design, and was not opened.`,
    notDesign: (name: string) => `'${name}' is not a saved design: it holds no JSON object.`,
    unreadable: (name: string) => `'${name}' cannot be read.`,
    notSaved: (reason: string) => `The design was not saved: ${reason}.`,
  },
  published: {
    title: 'Published',
    copy: 'Copy',
    copyAll: 'Copy all',
    all: 'the dictionary as JSON',
    root: ['real', 'imaginary'],
    section: ['b0', 'b1', 'b2', 'a1', 'a2'],
    count: (count: number) => `${count} numbers`,
    more: (rows: number) => `Show all ${rows} rows`,
    less: 'Show fewer rows',
  },
  layouts: {
    title: 'Layouts',
    target: 'For',
    file: 'the file',
    copy: 'Copy',
    save: 'Save',
    options: {
      normalise: 'normalise the level to 0 dB',
      as_published: 'sections as published',
      anyway: 'even where it is too noisy',
    },
  },
  startingPoints: {
    title: 'Starting points',
    menu: 'Start from…',
    welcome: 'Start from a filter, or turn any dial.',
    taken: (name: string) => `Started from ${name}.`,
    hum50: { name: 'Hum notch, 50 Hz', about: 'bandstop, 48 to 52 Hz' },
    hum60: { name: 'Hum notch, 60 Hz', about: 'bandstop, 58 to 62 Hz' },
    speech: { name: 'Speech band', about: 'bandpass, 300 to 3400 Hz' },
    eeg: { name: 'EEG at 250 Hz', about: 'bandpass, 0.5 to 40 Hz' },
    subsonic: { name: 'Subsonic', about: 'highpass, 20 Hz' },
    antiAlias: {
      name: 'Anti-alias, 96 to 48 kHz',
      about: 'lowpass, flat to 20 kHz, 96 dB down from 24 kHz',
    },
  },
  compare: {
    title: 'Compare',
    pin: 'Pin as B',
    pinAgain: 'Pin this as B instead',
    swap: 'Swap A and B',
    unpin: 'Unpin B',
    howTo: 'Pin the filter as B, then change it: both are drawn, and stand here side by side.',
    same: 'Both have the same settings.',
    settings: 'Settings that differ',
    numbers: 'Measured',
    none: '–',
    yesOrNo: (is: boolean) => (is ? 'yes' : 'no'),
    measures: {
      poles: 'poles',
      sections: 'sections',
      samplerate: 'sample rate',
      stable: 'stable',
      margin: 'outermost pole inside the circle by',
      ringing_ms: 'rings for',
      half_power_hz: '−3 dB at',
      stopband_highest_db: 'stopband at most',
      gain: 'gain',
      noise_db: 'noise in doubles below the peak',
      float_safe: 'safe in floats',
    } as Readonly<Record<string, string>>,
  },
  copy: {
    title: (what: string) => `Copy ${what}`,
    copied: 'Copied',
    done: (what: string) => `Copied ${what}.`,
    failedShort: 'Not copied',
    failed: 'The browser does not let the page copy.',
  },
  link: {
    title: (filter: string) => `${filter} – veltane`,
    tooLong: 'The address is too long to be a filter of this page: a fresh box is used instead.',
    wrong: (words: string) =>
      `The address has settings that cannot be used, and a fresh box's are used instead: ${words}`,
    refused: (reason: string) =>
      `The address is no filter, and a fresh box is used instead: ${reason}.`,
  },
  pictures: {
    panels: {
      level: 'Level',
      passband: 'Passband',
      phase: 'Phase',
      delay: 'Group delay',
      difference: 'Difference',
      sections: 'Sections',
      zeros_and_poles: 'Zeros and poles',
      poles: 'Poles',
      impulse: 'Impulse',
      step: 'Step',
    },
    choose: 'Which pictures are shown',
    logarithmic: 'Logarithmic',
    wrapped: 'Wrapped',
    wholeRange: 'All frequencies',
    enlarge: (panel: string) => `Enlarge ${panel}`,
    reduce: (panel: string) => `Reduce ${panel}`,
    close: (panel: string) => `Close ${panel}`,
    hint: 'Point at a picture to read it. Wheel zooms, dragging pans, a double click shows all.',
    surface: (panel: string) =>
      `${panel}: left and right read, plus and minus zoom, shift with left and right pans, 0 shows all`,
    timeSurface: (panel: string) => `${panel}: left and right read sample by sample`,
    rootSurface: (panel: string) => `${panel}: left and right read root by root`,
    cutoff: (index: number, count: number) =>
      count === 1 ? 'Cutoff' : index === 0 ? 'First cutoff' : 'Second cutoff',
    undrawable: (reason: string) => `There is no picture of this filter: ${reason}`,
    onTheRight: (label: string) => `right: ${label}`,
    legend: { a: 'A, this filter', b: 'B, pinned' },
    root: (kind: 'zero' | 'pole', radius: string, frequency: string) =>
      `${kind}: radius ${radius}, ${frequency}`,
    words: {
      askedAndReached: (asked: string, reached: string) => `${asked} asked, ${reached} reached`,
      valueAt: (value: string, place: string) => `${value} at ${place}`,
      highest: (value: string, place: string) => `highest ${value} at ${place}`,
      between: (from: string, to: string) => `from ${from} to ${to}`,
      atLeast: (value: string, span: string) => `at least ${value} ${span}`,
      atMost: (value: string, span: string) => `at most ${value} ${span}`,
      roots: (zeros: number, poles: number) =>
        `${zeros} ${zeros === 1 ? 'zero' : 'zeros'} and ${poles} ${poles === 1 ? 'pole' : 'poles'}`,
      farthest: (radius: string) => `poles within radius ${radius}`,
      nothing: 'no response',
    },
  },
  order: {
    title: 'Which order?',
    response: 'Response',
    edge: (band: 'passband' | 'stopband', index: number, count: number) => {
      const name = band === 'passband' ? 'Passband' : 'Stopband';
      if (count === 1) return `${name} edge`;
      return index === 0 ? `${name} from` : `${name} to`;
    },
    ripple: 'Ripple',
    attenuation: 'Attenuation',
    frequencyAxis: 'frequency in Hz',
    levelAxis: 'level in dB',
    restart: 'Start from this filter',
    columns: ['Family', 'Order', 'Ripple', 'Attenuation', 'Filter'],
    take: 'Take',
    takeFamily: (family: string, order: number) => `Take ${family} of order ${order}`,
    taken: (family: string, order: number) => `The filter is ${family} of order ${order}`,
    recommended: 'recommended',
    noisy: 'noisy',
    picture: (demand: {
      readonly response: string;
      readonly ripple: number;
      readonly attenuation: number;
    }) =>
      `The demand: ${demand.response}, ripple ${demand.ripple} dB, attenuation ${demand.attenuation} dB`,
  },
  verdict: {
    heading: 'Verdict',
    judging: 'Checking…',
    sound: 'Sound',
    problems: (count: number) => (count === 1 ? '1 problem' : `${count} problems`),
    noFilter: 'No filter',
    kind: (weight: Weight, about: string) =>
      `${weight === 'problem' ? 'Problem' : 'Note'}: ${about}:`,
    facts: (count: number) => `${count} facts`,
    change: 'Change: ',
    set: (settings: string) => `Set ${settings}`,
    setTitle: (settings: string) => `Sets ${settings}; undo takes it back`,
    and: ' and ',
  },
  listen: {
    heading: 'Listen',
    start: 'Start',
    stop: 'Stop',
    startTitle: 'Starts and stops the sound (space bar)',
    signal: 'Signal',
    signals: {
      pink: 'Pink noise',
      white: 'White noise',
      sweep: 'Sweep',
      clicks: 'Clicks',
      file: 'A file…',
    },
    file: 'Sound file',
    through: 'Through',
    choices: { off: 'No filter', a: 'A', b: 'B' },
    noB: 'Pin a filter as B to compare with it',
    match: 'Match levels',
    matchTitle:
      'Raises or lowers the filtered signal by what the filter does to its power, so that A and B are as loud as the signal itself',
    matched: (filter: 'a' | 'b', db: number) =>
      `${filter.toUpperCase()} is ${db < 0 ? 'lowered' : 'raised'} by ${Math.abs(db).toFixed(1)} dB, which makes it as loud as the signal.`,
    volume: 'Volume',
    decibels: (db: number) => `${db} dB`.replace('-', '−'),
    level: 'Level',
    levels: (rms: number, peak: number, lowest: number) => {
      const text = (db: number) => (db <= lowest ? '−∞' : db.toFixed(0).replace('-', '−'));
      return `${text(rms)} dB, peak ${text(peak)} dB`;
    },
    silence: 'off',
    limited: 'limited',
    notLimited: 'not limited',
    noSections: 'No sections are published, so there is nothing to hear.',
    ranAway: 'The filter is unstable: its output grew without bound and was muted.',
    fileTooLarge: (name: string, megabytes: number) => `${name} is larger than ${megabytes} MB.`,
    fileUnreadable: (name: string) => `${name} is not a sound file that this browser can read.`,
    rate: (hz: number) => `Audio at ${hz} Hz.`,
    otherRate: (design: number, audio: number) =>
      `The filter is for ${design} Hz, and the audio runs at ${audio} Hz: what the filter does at 1000 Hz is heard at ${Math.round((1000 * audio) / design)} Hz.`,
    follow: (hz: number) => `Design for ${hz} Hz`,
  },
} as const;
