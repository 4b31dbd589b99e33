+define+WIDTH=4+WITH_DEBUG
+define+DEPTH=8 -DMODE="fast"
rtl/top.v
