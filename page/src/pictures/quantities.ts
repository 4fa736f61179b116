// Numbers with units, as texts.

const minus = '−';

/** With a true minus sign and no negative zero. */
export function signed(text: string): string {
  if (/^-[0.]*$/.test(text)) return text.slice(1);
  return text.replaceAll('-', minus);
}

/** With so many digits behind the point. */
export function fixed(value: number, digits: number): string {
  return Number.isFinite(value) ? signed(value.toFixed(digits)) : unknown;
}

/** Where there is no number. */
export const unknown = '–';

/** With so many digits that count, zeros at the end left out. */
export function significant(value: number, digits: number): string {
  if (!Number.isFinite(value)) return unknown;
  return signed(String(Number(value.toPrecision(digits))));
}

/** "574.7 Hz", "3 kHz" */
export function frequencyText(hertz: number, digits = 4): string {
  if (!Number.isFinite(hertz)) return unknown;
  const size = Math.abs(hertz);
  if (size >= 999999.5) return `${significant(hertz / 1e6, digits)} MHz`;
  if (size >= 999.95) return `${significant(hertz / 1e3, digits)} kHz`;
  return `${significant(hertz, digits)} Hz`;
}

/** The unit of "level in dB". */
export function unitOf(label: string): string {
  const unit = label.split(' in ').at(-1) ?? '';
  return unit === 'degrees' ? '°' : unit;
}

/** A value of an axis with its unit, as finely as a reader of a curve needs it. */
export function valueText(value: number, unit: string): string {
  if (unit === '°') return `${fixed(value, 1)}°`;
  if (unit === 'dB') return `${fixed(value, Math.abs(value) < 0.995 ? 3 : 2)} dB`;
  return `${significant(value, 4)} ${unit}`;
}
