"""Draws time against order, by gnuplot."""

import subprocess

import report

COLOURS = {"veltane": "#0060ad", "SciPy": "#c02020", "liquid-dsp": "#308030"}
STROKES = {"lowpass": 1, "bandpass": 2}  # whole and dashed
DISC, CROSS = 7, 2


def panel(family, lines):
    """The commands that draw one family."""
    data, curves = [], []
    for response, stroke in STROKES.items():
        for program, colour in COLOURS.items():
            points = [(design["order"], run["us"], DISC if run["right"] else CROSS)
                      for design in lines[family, response]
                      if "refused" not in (run := design["runs"][program])]
            name = f"${program.replace('-', '_')}_{response}_{family.replace('-', '_')}"
            data.append(f"{name} << EOD\n"
                        + "".join(f"{n} {us} {point}\n" for n, us, point in points) + "EOD\n")
            curves.append(f"{name} using 1:2:3 with linespoints lw 1.5 dt {stroke} pt variable"
                          f" ps 0.7 lc rgb '{colour}' title '{program} {response}'")
    return "".join(data) + f"set title '{family}'\nplot " + ", \\\n  ".join(curves) + "\n"


def commands(results):
    lines = report.grid(results)
    orders = sorted({design["order"] for line in lines.values() for design in line})
    families = list(dict.fromkeys(family for family, _ in lines))
    panels = [panel(families[0], lines)]
    panels += ["unset key\nunset ylabel\n" + panel(family, lines) for family in families[1:]]
    return (f"""set terminal svg size 1080,420 background '#ffffff' font 'sans-serif,12'
set multiplot layout 1,{len(families)}
set logscale xy
set xrange [{orders[0]}:{orders[-1]}]
set yrange [0.1:1e6]
set format y '10^{{%T}}'
set xtics ({', '.join(map(str, orders))}) font ',9'
unset mytics
set grid xtics ytics lt 1 lw 0.5 lc rgb '#cccccc'
set xlabel 'order'
set ylabel 'microseconds'
set key top left samplen 2 font ',10'
""" + "".join(panels) + "unset multiplot\n")


def draw(results, file):
    """Writes an SVG picture. Raises CalledProcessError when gnuplot cannot."""
    run = subprocess.run(["gnuplot"], input=commands(results).encode(), check=True,
                         stdout=subprocess.PIPE)
    file.write_bytes(run.stdout)
