rtl/stream_if.sv
rtl/top.sv
