top.vhd
