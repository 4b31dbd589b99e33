stubs/ip_stubs.v
rtl/top.v
