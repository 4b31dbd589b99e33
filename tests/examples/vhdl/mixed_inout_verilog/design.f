top.v
pads.vhd
