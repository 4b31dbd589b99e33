--language=1364-2001
rtl/top.v
