// Prints what exported JavaScript makes of an impulse: node webaudio_impulse.mjs FILE NAME COUNT
//
// Node has no Web Audio. The class below is IIRFilterNode as the Web Audio text defines
// it: at most 20 coefficients a list, feedback[0] not 0, not all of feedforward 0, and
//   sum of feedback[k] y[n-k] = sum of feedforward[k] x[n-k]

import { pathToFileURL } from "node:url";

const check = (ok, what) => {
  if (!ok) throw new Error(what);
};

globalThis.IIRFilterNode = class {
  constructor(context, { feedforward, feedback }) {
    check(context === theContext, "a node of another context");
    for (const list of [feedforward, feedback])
      check(list.length >= 1 && list.length <= 20, `a list of ${list.length} coefficients`);
    check(feedback[0] !== 0, "feedback[0] is 0");
    check(feedforward.some((b) => b !== 0), "feedforward is all 0");
    Object.assign(this, { feedforward, feedback, next: null });
  }

  connect(destination) {
    check(this.next === null, "connected twice");
    this.next = destination;
    return destination;
  }

  process(x) {
    const y = [];
    for (let n = 0; n < x.length; ++n) {
      let sum = 0;
      for (let k = 0; k < this.feedforward.length && k <= n; ++k)
        sum += this.feedforward[k] * x[n - k];
      for (let k = 1; k < this.feedback.length && k <= n; ++k) sum -= this.feedback[k] * y[n - k];
      y.push(sum / this.feedback[0]);
    }
    return y;
  }
};

const theContext = {};
const [file, name, count] = process.argv.slice(2);
const exported = await import(pathToFileURL(file));
let signal = Array(Number(count)).fill(0);
signal[0] = 1;
const single = (context) => {
  const node = new IIRFilterNode(context, exported[name]);
  return { input: node, output: node };
};
const { input, output } = (exported[`${name}_chain`] ?? single)(theContext);
check(output.next === null, "the output leads on");
for (let node = input; node !== null; node = node.next) signal = node.process(signal);
for (const sample of signal) console.log(sample);
