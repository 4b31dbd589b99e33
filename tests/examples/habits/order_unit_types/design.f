rtl/fsm.sv
rtl/top.sv
rtl/types.sv
