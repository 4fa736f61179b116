# Draws the worst errors against the order. The caller sets:
#   data              columns: order; for poles and for denominators ours and
#                     SciPy's; for sections the same
#   top1, top2, top3  where each panel draws an infinite error
#   picture           the file to write
#   terminal          svg or png
if (terminal eq "svg") { set terminal svg size 980,380 font "DejaVu Sans,13" background "white" }
if (terminal eq "png") { set terminal pngcairo size 980,380 font "DejaVu Sans,10" background "white" }
set output picture

set multiplot layout 1,3 margins 0.065,0.985,0.25,0.90 spacing 0.068,0
set logscale xy
set xrange [1.8:225]
set xtics (2, 5, 10, 20, 50, 100, 200)
set xlabel "order"
set format y "10^{%T}"
unset mytics
set grid ytics lc rgb "#dddddd" lt 1
unset key

set style line 1 lc rgb "#000000" lw 2 dt 1 pt 7 ps 0.6
set style line 2 lc rgb "#c04000" lw 2 dt (12,5) pt 6 ps 0.8

set title "Poles: largest distance"
set yrange [1e-17:top1*3]
set ytics 1e-17,100,top1/10
set ytics add ("none" top1)
plot data using 1:2 with linespoints ls 1, data using 1:3 with linespoints ls 2

set title "Denominator: error over largest"
set yrange [1e-17:top2*1000]
set ytics 1e-15,1e5,top2/1e4
set ytics add ("none" top2)
plot data using 1:4 with linespoints ls 1, data using 1:5 with linespoints ls 2

set title "Sections: response error in dB"
set yrange [1e-12:top3*100]
set ytics 1e-10,100,top3/10
set ytics add ("none" top3)
plot data using 1:6 with linespoints ls 1, data using 1:7 with linespoints ls 2

# The key stands below all three.
set lmargin at screen 0; set rmargin at screen 1
set bmargin at screen 0; set tmargin at screen 0.1
unset logscale; unset border; unset xtics; unset ytics; unset grid; unset title; unset xlabel
set key center center horizontal samplen 5 width 2
plot [0:1] [0:1] NaN with linespoints ls 1 title "veltane", \
     NaN with linespoints ls 2 title "SciPy"
unset multiplot
