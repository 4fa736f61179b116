// Settings in words: "order 12", or as options, "--order 12".

import type { Description, Settings, Value } from '../session/protocol.ts';
import { strings } from '../strings.ts';

type Say = (name: string) => string;

function valuesText(description: Description, name: string, values: readonly Value[]): string {
  const attribute = description.attributes.find((declared) => declared.name === name);
  const isSwitch = attribute?.properties.style?.[0] === 'onoff';
  return values.map((value) => (isSwitch ? (value === 0 ? 'off' : 'on') : value)).join(' ');
}

function texts(description: Description, settings: Settings, say: Say): string[] {
  return Object.entries(settings).map(
    ([name, values]) => `${say(name)} ${valuesText(description, name, values)}`,
  );
}

export function inWords(description: Description, settings: Settings): string {
  const say: Say = (name) => name.replaceAll('_', ' ');
  return texts(description, settings, say).join(strings.verdict.and);
}

export function asOptions(description: Description, settings: Settings): string {
  const say: Say = (name) => `--${name.replaceAll('_', '-')}`;
  return texts(description, settings, say).join(' ');
}
