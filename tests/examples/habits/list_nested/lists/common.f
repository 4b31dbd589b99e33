+incdir+rtl
rtl/adder.v
