top.vhd
adder.v
