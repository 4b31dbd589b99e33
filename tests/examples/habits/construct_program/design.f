rtl/top.sv
rtl/bench.sv
