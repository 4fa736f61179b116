// A value that others follow.

export class Signal<T> {
  #value: T;
  readonly #followers = new Set<(value: T) => void>();

  constructor(value: T) {
    this.#value = value;
  }

  get value(): T {
    return this.#value;
  }

  set(value: T): void {
    this.#value = value;
    for (const follower of this.#followers) follower(value);
  }

  /** Calls with each new value, and with the present one at once. Returns what ends it. */
  follow(follower: (value: T) => void): () => void {
    this.#followers.add(follower);
    follower(this.#value);
    return () => this.#followers.delete(follower);
  }
}
