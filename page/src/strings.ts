// All that the page says, apart from what the module and the session say themselves.

export const strings = {
  title: 'veltane',
  loading: 'Loading…',
  cannotStart: (reason: string) => `The page cannot start: ${reason}`,
  counts: (changes: number, designs: number, microseconds: number) =>
    `${changes} changes, ${designs} designs, ${Math.round(microseconds)} µs`,
} as const;
