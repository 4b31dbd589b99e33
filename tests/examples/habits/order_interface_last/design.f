rtl/master.sv
rtl/top.sv
rtl/wb_if.sv
