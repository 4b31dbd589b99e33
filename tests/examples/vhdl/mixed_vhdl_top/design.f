cell.v
top.vhd
filter.v
adder.vhd
