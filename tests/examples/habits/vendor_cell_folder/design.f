-y cells
+libext+.v
rtl/netlist.v
