rtl/scaled.v
rtl/plain.v
rtl/top.sv
