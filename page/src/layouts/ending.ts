// How files of each layout usually end.

const endings: Readonly<Record<string, string>> = {
  scipy: '.py',
  octave: '.m',
  matlab: '.m',
  c: '.h',
  cpp: '.hpp',
  cmsis: '.h',
  webaudio: '.js',
  faust: '.dsp',
  csound: '.udo',
  supercollider: '.scd',
  csv: '.csv',
  json: '.json',
};

/** Of a target, such as "c-float": variants of one language end alike, and the rest are texts. */
export function endingOf(target: string): string {
  return endings[target.split('-')[0]!] ?? '.txt';
}
