"""Filters with the opcode in an orchestra."""

from programs import DOUBLES, one_by_one, run, samples

ENDING = ".udo"
TOLERANCE = DOUBLES

DOCUMENT = """<CsoundSynthesizer>
<CsOptions>
-n -m0 -d
</CsOptions>
<CsInstruments>
sr = {samplerate}
ksmps = 1
nchnls = 1
0dbfs = 1
#include "{file}"
instr 1
  ksample init 0
  aimpulse = (ksample == 0 ? 1 : 0)
  afiltered {name} aimpulse
  kfiltered downsamp afiltered
  fprintks "{output}", "%.17g\\n", kfiltered
  ksample += 1
endin
</CsInstruments>
<CsScore>
i1 0 {seconds}
</CsScore>
</CsoundSynthesizer>
"""


@one_by_one
def impulse_responses(file, name, samplerate, count):
    output = file.with_suffix(".samples")
    document = file.with_suffix(".csd")
    document.write_text(DOCUMENT.format(samplerate=samplerate, file=file, name=name, output=output,
                                        seconds=(count + 10) / samplerate), encoding="utf-8")
    run("csound", document)
    return samples(output.read_text(encoding="utf-8"))[:count]
