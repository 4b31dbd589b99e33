top.vhd
gate.v
