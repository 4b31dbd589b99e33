-full64 -l build.log
-timescale=1ns/1ps
+notimingchecks
-work work
+vcs+lic+wait
rtl/top.v
-Wall --trace
