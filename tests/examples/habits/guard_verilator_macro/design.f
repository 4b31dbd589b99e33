rtl/top.sv
