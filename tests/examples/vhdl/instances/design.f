top.vhd
other.vhd
leaf.vhd
