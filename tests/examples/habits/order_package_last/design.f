rtl/alu.sv
rtl/top.sv
rtl/types_pkg.sv
