// Labels beside lines that stand close to each other: each in a row where it covers no other.

export interface Span {
  readonly from: number;
  readonly to: number;
}

/** The row of each label, as low as it can be. What comes first has the choice. */
export function labelRows(labels: readonly Span[]): number[] {
  const rows: Span[][] = [];
  return labels.map((label) => {
    const isFree = (row: readonly Span[]) =>
      row.every(({ from, to }) => to <= label.from || label.to <= from);
    const found = rows.findIndex(isFree);
    const row = found < 0 ? rows.length : found;
    (rows[row] ??= []).push(label);
    return row;
  });
}
