ip/multiplier.v
rtl/top.v
