// The WebAssembly that the page carries, compressed.

/** Compiles what an element holds: gzip, as base64. */
export async function carriedModule(element: Element): Promise<WebAssembly.Module> {
  const text = atob(element.textContent ?? '');
  const bytes = Uint8Array.from(text, (character) => character.charCodeAt(0));
  const stream = new Blob([bytes]).stream().pipeThrough(new DecompressionStream('gzip'));
  return WebAssembly.compile(await new Response(stream).arrayBuffer());
}
