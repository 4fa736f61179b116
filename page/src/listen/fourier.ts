// Discrete Fourier transforms of lengths that are powers of two, in place.

/** Replaces real and imaginary parts by those of sum over n of x[n] e^(-2 pi i k n / N). */
export function transform(re: Float64Array, im: Float64Array): void {
  const size = re.length;
  reverseBits(re, im);
  for (let half = 1; half < size; half *= 2) {
    for (let k = 0; k < half; ++k) {
      const cos = Math.cos((Math.PI * k) / half);
      const sin = -Math.sin((Math.PI * k) / half);
      for (let i = k; i < size; i += 2 * half) {
        const j = i + half;
        const x = re[j]! * cos - im[j]! * sin;
        const y = re[j]! * sin + im[j]! * cos;
        re[j] = re[i]! - x;
        im[j] = im[i]! - y;
        re[i]! += x;
        im[i]! += y;
      }
    }
  }
}

function reverseBits(re: Float64Array, im: Float64Array): void {
  const size = re.length;
  for (let i = 0, j = 0; i < size; ++i) {
    if (i < j) {
      [re[i], re[j]] = [re[j]!, re[i]!];
      [im[i], im[j]] = [im[j]!, im[i]!];
    }
    let bit = size / 2;
    for (; bit >= 1 && j & bit; bit /= 2) j ^= bit;
    j ^= bit;
  }
}
