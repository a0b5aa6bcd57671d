# The chart of doc/performance.md, from the files that hyperfine wrote:
#
#     gnuplot -e "data = 'FOLDER'; set output 'CHART.svg'" chart.gnuplot
#
# FOLDER holds CD-PROGRAM.csv for two CDs and two programs. In each, "user" and "system" are CPU
# times of a run in s, and the last column is the number of PCI functions.
set terminal svg size 800,480 dynamic font "Helvetica,Arial,sans-serif,14" background "#ffffff"
set datafile separator ","
set logscale xy
set xrange [0.8:5200]
set xtics ("1" 1, "4" 4, "16" 16, "64" 64, "256" 256, "1,024" 1024, "4,096" 4096)
set ytics ("1 ms" 1e-3, "10 ms" 1e-2, "100 ms" 1e-1, "1 s" 1, "10 s" 10)
set grid linecolor rgb "#e3e7eb"
set xlabel "PCI functions of the machine"
set ylabel "CPU time of a run"
set key left top reverse Left
file(name) = data . "/" . name . ".csv"
cpu(name) = column("user") + column("system")
set style data linespoints
plot file("large-awk") using 9:(cpu(0)) title "awk, large CD" dashtype 2 linecolor rgb "#c2570c", \
    file("large-slotrpt") using 9:(cpu(0)) title "slotrpt, large CD" linecolor rgb "#c2570c", \
    file("small-awk") using 9:(cpu(0)) title "awk, small CD" dashtype 2 linecolor rgb "#0b5fa5", \
    file("small-slotrpt") using 9:(cpu(0)) title "slotrpt, small CD" linecolor rgb "#0b5fa5"
