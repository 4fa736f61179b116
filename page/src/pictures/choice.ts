// Which panels are open, and which one is enlarged: a habit of the user, kept from visit to visit.

import type { PanelName } from '../session/protocol.ts';
import { keep, kept } from '../state/kept.ts';
import { Signal } from '../state/signal.ts';

/** In the order in which they are shown. */
export const panelNames = [
  'level',
  'passband',
  'phase',
  'delay',
  'difference',
  'sections',
  'zeros_and_poles',
  'poles',
  'impulse',
  'step',
] as const satisfies readonly PanelName[];

export interface Choice {
  readonly open: readonly PanelName[];
  readonly enlarged?: PanelName;
}

const key = 'pictures';

const usual: Choice = { open: panelNames.filter((name) => name !== 'sections') };

const isName = (name: unknown): name is PanelName =>
  (panelNames as readonly unknown[]).includes(name);

/** What was kept; the usual choice where that is nothing of ours. */
function keptChoice(): Choice {
  try {
    const found = JSON.parse(kept(key) ?? '') as Partial<Record<string, unknown>>;
    if (!Array.isArray(found['open'])) return usual;
    const open = found['open'].filter(isName);
    const { enlarged } = found;
    return isName(enlarged) && open.includes(enlarged) ? { open, enlarged } : { open };
  } catch {
    return usual;
  }
}

export class Choices {
  readonly value = new Signal(keptChoice());

  isOpen(name: PanelName): boolean {
    return this.value.value.open.includes(name);
  }

  open(name: PanelName): void {
    this.#keep({ ...this.value.value, open: [...this.value.value.open, name] });
  }

  close(name: PanelName): void {
    const open = this.value.value.open.filter((other) => other !== name);
    const { enlarged } = this.value.value;
    this.#keep(enlarged === undefined || enlarged === name ? { open } : { open, enlarged });
  }

  /** Enlarges a panel, or gives the enlarged one its usual size. */
  toggleSize(name: PanelName): void {
    const { open, enlarged } = this.value.value;
    this.#keep(enlarged === name ? { open } : { open, enlarged: name });
  }

  #keep(choice: Choice): void {
    this.value.set(choice);
    keep(key, JSON.stringify(choice));
  }
}
