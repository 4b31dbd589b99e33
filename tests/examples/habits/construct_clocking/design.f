rtl/bus_if.sv
rtl/top.sv
