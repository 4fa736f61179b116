// Numbers as people type them: "3k", "3 kHz", "300,3400", "60 dB". The command takes the same.

/** The unit that an attribute's numbers are in; empty for a bare number. */
export type Unit = 'Hz' | 'dB' | '';

export type Typed =
  { readonly numbers: readonly number[] } | { readonly wrong: 'doubtful' | 'text' };

const number = /^([-+]?(?:\d+\.?\d*|\.\d+)(?:e[-+]?\d+)?)(?:\s*([kKM]))?(?:\s*(hz|db))?/i;
const separator = /^(?:\s*[,;]\s*|\s*…\s*|\s+to\s+|\s+)/;
const thousands: Readonly<Record<string, string>> = { '': '', k: 'e3', K: 'e3', M: 'e6' };

// "3,4kHz" may be one number with a decimal comma, or two in kHz.
const doubtful = /^[-+]?\d+,\s*\d+\s*(?:[kKM]|[kKM]?\s*(?:hz|db))$/i;

function oneOf(word: RegExpExecArray, unit: Unit): number | undefined {
  const [, digits = '', scale = '', typedUnit = ''] = word;
  if (typedUnit !== '' && typedUnit.toLowerCase() !== unit.toLowerCase()) return undefined;
  const exponent = thousands[scale];
  if (exponent === undefined || (exponent !== '' && /e/i.test(digits))) return undefined;
  // Not multiplied, so that the digits keep their value.
  const value = Number(digits + exponent);
  return Number.isFinite(value) ? value : undefined;
}

export function typedNumbers(typed: string, unit: Unit): Typed {
  let rest = typed.replaceAll('\u2212', '-').trim();
  if (doubtful.test(rest)) return { wrong: 'doubtful' };
  const numbers: number[] = [];
  while (rest !== '') {
    const word = number.exec(rest);
    const value = word ? oneOf(word, unit) : undefined;
    if (!word || value === undefined) return { wrong: 'text' };
    numbers.push(value);
    rest = rest.slice(word[0].length);
    if (rest === '') break;
    const between = separator.exec(rest);
    if (!between) return { wrong: 'text' };
    rest = rest.slice(between[0].length);
    if (rest === '') return { wrong: 'text' };
  }
  return numbers.length > 0 ? { numbers } : { wrong: 'text' };
}

/** A number as its field shows it: the shortest that reads back. */
export function shownNumber(value: number): string {
  return Object.is(value, -0) ? '-0' : String(value);
}
