rtl/fifo.sv
rtl/fifo_checks.sv
rtl/top.sv
