rtl/top.sv
rtl/bench_pkg.sv
