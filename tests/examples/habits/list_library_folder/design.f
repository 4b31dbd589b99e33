+libext+.v+.sv
-y lib
-y more/lib
rtl/top.v
