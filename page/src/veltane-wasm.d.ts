// What emscripten makes of page/wasm/bindings.cpp.
declare module 'veltane-wasm' {
  export interface VeltaneModule {
    readonly HEAPU8: Uint8Array<ArrayBuffer>;
    readonly HEAPF64: Float64Array<ArrayBuffer>;
    _malloc(size: number): number;
    _free(place: number): void;
    _veltane_ask(request: number, length: number): void;
    _veltane_document(): number;
    _veltane_document_size(): number;
    _veltane_numbers(): number;
    _veltane_numbers_size(): number;
  }

  export default function createVeltane(options: {
    locateFile(name: string): string;
    instantiateWasm(
      imports: WebAssembly.Imports,
      receive: (instance: WebAssembly.Instance, module: WebAssembly.Module) => void,
    ): object;
  }): Promise<VeltaneModule>;
}
