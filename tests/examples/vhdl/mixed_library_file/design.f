rtl/top.vhd
-v lib/cells.v
-v lib/cells.vhd
