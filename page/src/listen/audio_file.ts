// A file of the user's own as a signal.

import { strings } from '../strings.ts';

const mostMegabytes = 256;

/** Any format that the browser knows, at the context's rate, of one channel or two. Raises a
 *  sentence for what is none. */
export async function decoded(file: File, context: BaseAudioContext): Promise<AudioBuffer> {
  const words = strings.listen;
  if (file.size > mostMegabytes * 1e6)
    throw new Error(words.fileTooLarge(file.name, mostMegabytes));
  let buffer: AudioBuffer;
  try {
    buffer = await context.decodeAudioData(await file.arrayBuffer());
  } catch {
    throw new Error(words.fileUnreadable(file.name));
  }
  if (buffer.length === 0) throw new Error(words.fileUnreadable(file.name));
  return buffer;
}
