stage.vhd
top.v
