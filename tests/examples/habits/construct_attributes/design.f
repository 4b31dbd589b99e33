rtl/top.v
