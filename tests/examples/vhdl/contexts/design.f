top.vhd
leaf.vhd
common.vhd
