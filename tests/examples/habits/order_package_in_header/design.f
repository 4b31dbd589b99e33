+incdir+inc
rtl/core.sv
rtl/top.sv
