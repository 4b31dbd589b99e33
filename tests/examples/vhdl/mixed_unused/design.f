extra.vhd
top.v
