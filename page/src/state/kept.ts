// Choices that outlast a visit: the theme, the open tab. Where nothing can be kept, nothing is.

const prefix = 'veltane.';

export function kept(name: string): string | undefined {
  try {
    return localStorage.getItem(prefix + name) ?? undefined;
  } catch {
    return undefined;
  }
}

export function keep(name: string, value: string): void {
  try {
    localStorage.setItem(prefix + name, value);
  } catch {
    // A page from a disk may have no storage, or a full one.
  }
}
