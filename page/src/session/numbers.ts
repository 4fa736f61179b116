// Curves arrive beside the document as one list, which the document refers to.

function isPlace(value: object): value is { numbers: [begin: number, count: number] } {
  return 'numbers' in value;
}

/** A document with its lists of numbers in place of what refers to them. */
export function withNumbers(value: unknown, numbers: Float64Array): unknown {
  if (typeof value !== 'object' || value === null) return value;
  if (isPlace(value)) {
    const [begin, count] = value.numbers;
    return numbers.subarray(begin, begin + count);
  }
  if (Array.isArray(value)) return value.map((item) => withNumbers(item, numbers));
  return Object.fromEntries(
    Object.entries(value).map(([key, member]) => [key, withNumbers(member, numbers)]),
  );
}
