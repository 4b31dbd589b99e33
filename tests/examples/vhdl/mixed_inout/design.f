top.vhd
pads.v
