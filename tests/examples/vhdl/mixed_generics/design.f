top.vhd
tuned.v
back.vhd
