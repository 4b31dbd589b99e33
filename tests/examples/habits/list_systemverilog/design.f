-sv
rtl/top.v
