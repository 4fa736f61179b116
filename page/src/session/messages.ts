// What the page and its workers send each other.

export interface Start {
  readonly module: WebAssembly.Module;
}

export interface Asked {
  readonly number: number;
  /** JSON. */
  readonly request: string;
}

export interface Answered {
  readonly number: number;
  readonly answer: { readonly document: string; readonly numbers: Float64Array<ArrayBuffer> };
}
