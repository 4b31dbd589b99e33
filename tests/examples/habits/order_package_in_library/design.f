rtl/top.sv
-v lib/fixed_pkg.sv
