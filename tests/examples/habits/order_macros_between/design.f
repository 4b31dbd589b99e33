rtl/top.sv
rtl/narrow.sv
rtl/widths_pkg.sv
