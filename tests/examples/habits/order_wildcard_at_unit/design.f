rtl/user.sv
rtl/top.sv
rtl/map_pkg.sv
