modules.v
top.vhd
common.vhd
