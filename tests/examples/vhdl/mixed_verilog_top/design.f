top.v
pair.vhd
delay.sv
