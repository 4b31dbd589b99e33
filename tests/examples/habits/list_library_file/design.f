rtl/top.v
-v lib/cells.v
