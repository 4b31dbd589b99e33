rtl/top.v
rtl/gone.v
