// Numbers of a dictionary as texts: the shortest that read back to the same double.

import type { Value } from '../session/protocol.ts';

/** JSON has no word for what is not finite, and the session answers null. */
export type Published = Value | null;

export function shownValue(value: Published): string {
  if (value === null) return 'not finite';
  return Object.is(value, -0) ? '-0' : String(value);
}

export function jsonValue(value: Published | readonly Published[]): string {
  if (Array.isArray(value)) return `[${value.map(jsonValue).join(', ')}]`;
  return Object.is(value, -0) ? '-0.0' : JSON.stringify(value);
}

/** Numbers in rows, with their columns one below the other and under their headings. */
export function columns(values: readonly Published[], headings: readonly string[]): string[] {
  const inRow = Math.max(headings.length, 1);
  const texts = [...headings, ...values.map(shownValue)].map((text) =>
    text.startsWith('-') ? text : ` ${text}`,
  );
  const widths = Array.from({ length: inRow }, (_, column) =>
    texts.reduce(
      (width, text, at) => (at % inRow === column ? Math.max(width, text.length) : width),
      0,
    ),
  );
  const rows: string[] = [];
  for (let begin = 0; begin < texts.length; begin += inRow) {
    const row = texts.slice(begin, begin + inRow);
    rows.push(
      row
        .map((text, column) => text.padEnd(widths[column]!))
        .join('  ')
        .trimEnd(),
    );
  }
  return rows;
}
