--language 1800-2012
rtl/top.v
