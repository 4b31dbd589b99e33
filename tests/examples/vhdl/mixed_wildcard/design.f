cell_e.vhd
top.sv
