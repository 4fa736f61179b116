// The space bar, where it does nothing else.

const takesSpace = 'input, select, textarea, button, summary, a, [contenteditable], [role]';

/** Calls when the space bar is pressed outside of whatever takes keys itself. */
export function toggleOnSpace(toggle: () => void): void {
  addEventListener('keydown', (event) => {
    if (event.key !== ' ' || event.repeat || event.defaultPrevented) return;
    if (event.ctrlKey || event.altKey || event.metaKey || event.shiftKey) return;
    if (event.target instanceof Element && event.target.matches(takesSpace)) return;
    event.preventDefault();
    toggle();
  });
}
