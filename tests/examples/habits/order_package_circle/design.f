rtl/a_pkg.sv
rtl/b_pkg.sv
rtl/top.sv
