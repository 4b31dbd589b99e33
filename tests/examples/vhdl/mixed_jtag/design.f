top.v
wrapped.vhd
