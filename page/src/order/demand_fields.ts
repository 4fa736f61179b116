// A demand in fields, for the keyboard and for exact numbers.

import { element } from '../dom.ts';
import { strings } from '../strings.ts';
import {
  edgesOf,
  frequencyOf,
  isResponse,
  responses,
  withEdge,
  withResponse,
  type Demand,
} from './demand.ts';

interface Field {
  readonly label: string;
  readonly unit: string;
  value(demand: Demand): number;
  set(demand: Demand, value: number, nyquist: number): Demand;
}

function fieldsOf(demand: Demand): Field[] {
  const edges = edgesOf(demand).map((edge): Field => ({
    label: strings.order.edge(edge.band, edge.index, demand[edge.band].length),
    unit: 'Hz',
    value: (now) => frequencyOf(now, edge),
    set: (now, value, nyquist) => withEdge(now, edge, value, nyquist),
  }));
  return [
    ...edges,
    {
      label: strings.order.ripple,
      unit: 'dB',
      value: (now) => now.ripple,
      set: (now, value) => (value > 0 && value < now.attenuation ? { ...now, ripple: value } : now),
    },
    {
      label: strings.order.attenuation,
      unit: 'dB',
      value: (now) => now.attenuation,
      set: (now, value) =>
        value > now.ripple && value <= 400 ? { ...now, attenuation: value } : now,
    },
  ];
}

export class DemandFields {
  readonly element = element('div', { class: 'demand-fields' });
  readonly #change: (demand: Demand) => void;
  readonly #select = element('select');
  readonly #numbers = element('div', { class: 'numbers' });
  #made: { readonly field: Field; readonly input: HTMLInputElement }[] = [];
  #demand: Demand | undefined;
  #nyquist = 0;

  constructor(change: (demand: Demand) => void) {
    this.#change = change;
    for (const response of responses)
      this.#select.append(element('option', { value: response }, response));
    this.#select.addEventListener('change', () => {
      const { value } = this.#select;
      if (this.#demand && isResponse(value))
        change(withResponse(this.#demand, value, this.#nyquist));
    });
    const label = element('label', {}, element('span', {}, strings.order.response), this.#select);
    this.element.append(label, this.#numbers);
  }

  show(demand: Demand, nyquist: number): void {
    const isOther = demand.response !== this.#demand?.response;
    this.#demand = demand;
    this.#nyquist = nyquist;
    this.#select.value = demand.response;
    if (isOther) this.#make(demand);
    for (const { field, input } of this.#made)
      // What is being typed stays.
      if (input !== document.activeElement || Number(input.value) !== field.value(demand))
        input.value = String(field.value(demand));
  }

  #make(demand: Demand): void {
    this.#made = fieldsOf(demand).map((field) => {
      const input = element('input', { type: 'number', step: 'any', min: '0' });
      // Typing ends with the enter key or by leaving; the arrows of the field count at once.
      input.addEventListener('change', () => {
        if (!this.#demand) return;
        const changed = field.set(this.#demand, input.valueAsNumber, this.#nyquist);
        this.#change(changed);
        input.value = String(field.value(changed));
      });
      return { field, input };
    });
    const labels = this.#made.map(({ field, input }) =>
      element('label', {}, element('span', {}, `${field.label} (${field.unit})`), input),
    );
    this.#numbers.replaceChildren(...labels);
  }
}
