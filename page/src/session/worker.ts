// The session in a worker, so that the page never waits for it.

import createVeltane, { type VeltaneModule } from 'veltane-wasm';
import type { Answered, Asked, Start } from './messages.ts';

const encoder = new TextEncoder();
const decoder = new TextDecoder();

function answer(veltane: VeltaneModule, request: string): Answered['answer'] {
  const text = encoder.encode(request);
  const place = veltane._malloc(text.length);
  veltane.HEAPU8.set(text, place);
  veltane._veltane_ask(place, text.length);
  veltane._free(place);
  // The memory may have grown and moved, so that its views are taken afterwards.
  const begin = veltane._veltane_document();
  const document = veltane.HEAPU8.subarray(begin, begin + veltane._veltane_document_size());
  const first = veltane._veltane_numbers() / Float64Array.BYTES_PER_ELEMENT;
  const numbers = veltane.HEAPF64.slice(first, first + veltane._veltane_numbers_size());
  return { document: decoder.decode(document), numbers };
}

async function start({ module }: Start): Promise<void> {
  const veltane = await createVeltane({
    locateFile: (name) => name,
    instantiateWasm(imports, receive) {
      void WebAssembly.instantiate(module, imports).then((instance) => {
        receive(instance, module);
      });
      return {};
    },
  });
  addEventListener('message', ({ data }: MessageEvent<Asked>) => {
    const answered: Answered = { number: data.number, answer: answer(veltane, data.request) };
    postMessage(answered, { transfer: [answered.answer.numbers.buffer] });
  });
  postMessage('ready');
}

addEventListener('message', ({ data }: MessageEvent<Start>) => void start(data), { once: true });
