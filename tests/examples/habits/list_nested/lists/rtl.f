-f lists/common.f
rtl/top.v
./rtl/../rtl/adder.v
