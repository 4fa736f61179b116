// What is asked of a session and what it answers. page/session/ has the other side.

/** A value of an attribute, as the box holds it. */
export type Value = number | string;

/** Settings by attribute name. Those that are missing are as in a fresh box. */
export type Settings = Readonly<Record<string, readonly Value[]>>;

/** What the class declares of one of its attributes. */
export interface Attribute {
  readonly name: string;
  readonly type: 'symbol' | 'long' | 'float64';
  /** How many values it takes. */
  readonly maximum: number;
  readonly lowest?: number;
  readonly highest?: number;
  /** By name, such as "label", "category", "style" and "enumvals". */
  readonly properties: Readonly<Record<string, readonly Value[]>>;
}

export interface Target {
  readonly name: string;
  readonly summary: string;
}

/** The answer to "describe". */
export interface Description {
  readonly version: string;
  /** In the order of the class. */
  readonly attributes: readonly Attribute[];
  /** The settings of a fresh box. */
  readonly fresh: Settings;
  /** What filters can be exported for. */
  readonly targets: readonly Target[];
}

/** A number, a text, or a list of these, under its key. */
export type DictionaryEntry = readonly [key: string, value: Value | readonly Value[]];

/** A filter that was designed. */
export interface Design {
  /** The filter in one line. */
  readonly title: string;
  /** All attributes, as the box holds them. */
  readonly settings: Settings;
  /** In Hz, the one that the design is for. */
  readonly samplerate: number;
  /** A sentence for each setting that was changed. */
  readonly remarks: readonly string[];
  /** The attributes that the box shows as out of use. */
  readonly out_of_use: readonly string[];
  /** What was published, in its order. */
  readonly dictionary: readonly DictionaryEntry[];
  /** The words that make the same filter at a terminal. */
  readonly command: readonly string[];
}

/** Numbers as they arrive beside a document. */
export type Numbers = Float64Array;

export interface Curve {
  readonly x: Numbers;
  /** NaN where the curve is interrupted. */
  readonly y: Numbers;
}

export interface Axis {
  readonly low: number;
  readonly high: number;
  readonly logarithmic: boolean;
  /** With its unit: "level in dB". */
  readonly label: string;
}

/** A panel over frequency. All numbers are in the units of its axes. */
export interface ResponsePanel {
  readonly title: string;
  readonly x: Axis;
  readonly y: Axis;
  /** The same values in another unit. */
  readonly right?: Axis;
  readonly cutoffs: readonly number[];
  /** Values asked for. */
  readonly limits: readonly number[];
  /** One for each filter. */
  readonly curves: readonly Curve[];
  /** Half-power points, one list for each filter. */
  readonly marks: readonly Curve[];
  /** What the level has to stay out of: corners, and the part of the outline that is a limit. */
  readonly mask?: readonly { readonly polygon: Curve; readonly border: Curve }[];
}

/** A panel of the z plane. */
export interface RootPanel {
  readonly title: string;
  readonly x: Axis;
  readonly y: Axis;
  /** The point of the plane that is 0 on both axes. */
  readonly origin: readonly [real: number, imaginary: number];
  /** How long 1 is on the axes. */
  readonly unit: number;
  readonly circle: Curve;
  /** Around what the other panel enlarges. */
  readonly frame: Curve;
  /** One for each filter. */
  readonly filters: readonly { readonly zeros: Curve; readonly poles: Curve }[];
  readonly labels: readonly { readonly x: number; readonly y: number; readonly counts: number[] }[];
}

/** A panel over time. */
export interface TimePanel {
  readonly title: string;
  readonly x: Axis;
  readonly y: Axis;
  readonly curves: readonly Curve[];
  readonly shows_samples: boolean;
}

export interface Panels {
  level?: ResponsePanel;
  passband?: ResponsePanel;
  phase?: ResponsePanel;
  delay?: ResponsePanel;
  zeros_and_poles?: RootPanel;
  poles?: RootPanel;
  impulse?: TimePanel;
  step?: TimePanel;
  /** The level of the first filter less that of the second. */
  difference?: ResponsePanel;
  /** Each section's own level. */
  sections?: ResponsePanel;
}

export type PanelName = keyof Panels;

/** What the frequency panels show; what is missing is chosen by the session. */
export interface View {
  readonly low?: number;
  readonly high?: number;
  readonly scale?: 'linear' | 'logarithmic';
  readonly wrapped?: boolean;
}

export interface LiveRequest {
  readonly settings: Settings;
  /** Those of a filter to compare with. */
  readonly other?: Settings;
  /** In Hz, of audio that is switched on. */
  readonly audio_rate?: number;
  readonly panels: readonly PanelName[];
  readonly view?: View;
}

export interface LiveAnswer {
  readonly design: Design;
  readonly other?: Design;
  readonly panels: Panels;
  /** Why no panels could be drawn; empty if they were. */
  readonly undrawable: string;
  /** The time that it took in the session. */
  readonly microseconds: number;
}

export type Weight = 'fact' | 'note' | 'problem';

export interface Finding {
  readonly about: string;
  readonly weight: Weight;
  readonly text: string;
  /** What to change, in words; empty for facts. */
  readonly change: string;
  /** What of the words can be said in settings: any one of them is enough. */
  readonly remedies: readonly Settings[];
  /** Whether a lower order is a remedy, too: "lower_order" finds it. */
  readonly lower_order: boolean;
}

export interface Verdict {
  readonly title: string;
  readonly problems: number;
  readonly findings: readonly Finding[];
  readonly measured: Readonly<Record<string, unknown>>;
}

export interface LayoutRequest {
  readonly settings: Settings;
  readonly audio_rate?: number;
  readonly target: string;
  readonly normalise?: boolean;
  readonly as_published?: boolean;
  readonly anyway?: boolean;
}

export interface Layout {
  readonly text: string;
  readonly remarks: readonly string[];
  /** The words of the command that writes the same bytes. */
  readonly command: readonly string[];
}

export interface EstimateRequest {
  readonly response: string;
  /** Edges in Hz, ascending: one, or two of a band. */
  readonly passband: readonly number[];
  readonly stopband: readonly number[];
  /** In dB, above zero. */
  readonly ripple: number;
  readonly attenuation: number;
  readonly samplerate: number;
}

export interface Candidate {
  readonly family: string;
  /** Why the family cannot do it; empty when it can. */
  readonly impossible: string;
  readonly order: number;
  readonly poles: number;
  readonly ripple: number;
  readonly attenuation: number;
  readonly noisy: boolean;
  readonly recommended: boolean;
  /** Those of the filter. */
  readonly settings: Settings;
}

/** What each request takes and answers. */
export interface Requests {
  describe: { takes: object; answers: Description };
  live: { takes: LiveRequest; answers: LiveAnswer };
  verdict: { takes: { settings: Settings; audio_rate?: number }; answers: Verdict };
  /** The highest order at which nothing wants a lower one; null if there is none. */
  lower_order: {
    takes: { settings: Settings; audio_rate?: number };
    answers: { order: number | null };
  };
  layout: { takes: LayoutRequest; answers: Layout };
  estimate: { takes: EstimateRequest; answers: { candidates: readonly Candidate[] } };
  /** A design that was saved as JSON. */
  open: { takes: { text: string; name: string }; answers: { settings: Settings } };
  /** The document that `veltane design --format json` writes. */
  document: { takes: { settings: Settings; audio_rate?: number }; answers: { text: string } };
}

export type RequestName = keyof Requests;

/** A request that was refused: its message is a sentence for the user. */
export class Refused extends Error {
  override readonly name = 'Refused';
}
