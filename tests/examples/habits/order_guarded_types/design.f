+incdir+inc
rtl/a_top.sv
rtl/b_pkg.sv
