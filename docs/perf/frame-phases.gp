# Draws frame-phases.png from frame-phases.dat (both beside this script):
#     gnuplot -c docs/perf/frame-phases.gp
dir = system("dirname '" . ARG0 . "'")
data = dir . "/frame-phases.dat"
set terminal pngcairo size 900,420 font "DejaVu Sans,11"
set output dir . "/frame-phases.png"
set title "Where one 1920×1080 frame's time goes (one thread, whole process)"
set ylabel "CPU seconds"
set style data histograms
set style histogram rowstacked
set style fill solid 0.9 border rgb "white"
set boxwidth 0.55
set key outside right top vertical
set grid ytics
set yrange [0:*]
set offsets 0, 0, 0.1, 0
set xtics nomirror
set ytics nomirror
set border 3
# Totals above the bars.
plot for [i=2:6] data using i:xtic(1) title columnhead(i) linecolor i - 1, \
     data using ($0 - 1):($2+$3+$4+$5+$6):(sprintf("%.2f s", $2+$3+$4+$5+$6)) with labels offset 0,1 notitle
