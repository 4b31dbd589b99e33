rtl/top.sv
rtl/sub.sv
