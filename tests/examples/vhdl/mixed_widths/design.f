top.v
leaf.vhd
