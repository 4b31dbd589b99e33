rtl/top.v
-F ip/uart/uart.f
