# The chart of doc/performance.md: two product CDs side by side, on the same axes.
#
#     gnuplot -e "series = 'FILE'; set output 'CHART.svg'" chart.gnuplot
#
# A row of FILE holds the number of functions, then three CPU times in ms on the small CD and three
# on the large one: of the start of a process, of the awk version and of slotrpt.
set terminal svg size 1000,480 dynamic font "Helvetica,Arial,sans-serif,14" background "#ffffff"

ink = "#1f2933"
set style line 1 linecolor rgb "#0b5fa5" linewidth 3 pointtype 7 pointsize 0.6    # slotrpt
set style line 2 linecolor rgb "#c2570c" linewidth 2 pointtype 7 pointsize 0.5    # the awk version
set style line 3 linecolor rgb "#6b7280" linewidth 2 dashtype (8, 6)              # a start

stats series using 1 nooutput  # before a range is set, since a range can exclude rows
last = STATS_records - 1       # the last row: the names stand beside its points

set logscale xy
set xrange [0.8:5200]
set yrange [0.3:4000]
set xtics ("1" 1, "4" 4, "16" 16, "64" 64, "256" 256, "1,024" 1024, "4,096" 4096)
set ytics ("1 ms" 1, "10 ms" 10, "100 ms" 100, "1 s" 1000)
set tics nomirror scale 0 textcolor rgb ink
set xtics offset 0,0.3
set grid xtics ytics linetype 1 linecolor rgb "#e3e7eb" linewidth 1
set border 3 linecolor rgb "#9aa5b1"
set xlabel "PCI functions of the machine" textcolor rgb ink offset 0,0.3
unset key
beside = "left offset 1,0 textcolor"  # how a name stands beside the last point of its line

set multiplot
set tmargin at screen 0.80
set bmargin at screen 0.15
set label 1 "CPU time of a run" at screen 0.014,0.94 font ",19" textcolor rgb ink

set lmargin at screen 0.075
set rmargin at screen 0.43
set label 2 "small CD: 400 named adapters, 1,600 lines" at graph 0,1.06 textcolor rgb ink
plot series using 1:2 with lines linestyle 3, \
    series using 1:3 with linespoints linestyle 2, \
    series using 1:4 with linespoints linestyle 1, \
    series using 1:2:("process start") every ::last with labels @beside linestyle 3, \
    series using 1:3:("awk version") every ::last with labels @beside linestyle 2, \
    series using 1:4:("slotrpt") every ::last with labels @beside linestyle 1

unset label 1
set lmargin at screen 0.545
set rmargin at screen 0.90
set ytics ("" 1, "" 10, "" 100, "" 1000)
set label 2 "large CD: 17,600 named adapters, 60,000 lines"
plot series using 1:5 with lines linestyle 3, \
    series using 1:6 with linespoints linestyle 2, \
    series using 1:7 with linespoints linestyle 1, \
    series using 1:5:("process start") every ::last with labels @beside linestyle 3, \
    series using 1:6:("awk version") every ::last with labels @beside linestyle 2, \
    series using 1:7:("slotrpt") every ::last with labels @beside linestyle 1
unset multiplot
