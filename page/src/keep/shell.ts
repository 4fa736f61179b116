// A command for a terminal.

const plain = /^[A-Za-z0-9_@%+=:,./-]+$/;

/** Words as a POSIX shell takes them. */
export function shellLine(words: readonly string[]): string {
  return words
    .map((word) => (plain.test(word) ? word : `'${word.replaceAll("'", `'\\''`)}'`))
    .join(' ');
}
