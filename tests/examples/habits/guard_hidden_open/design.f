rtl/delay.v
rtl/top.v
