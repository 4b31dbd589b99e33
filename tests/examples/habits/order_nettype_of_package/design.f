rtl/top.v
rtl/sizes_pkg.sv
