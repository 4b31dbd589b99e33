+incdir+inc
rtl/top.sv
rtl/sub.sv
