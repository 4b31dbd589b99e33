rtl/top.v
lib/dff.v
