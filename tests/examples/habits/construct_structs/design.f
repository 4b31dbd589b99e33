rtl/bus_pkg.sv
rtl/top.sv
