--std 93
top.vhd
