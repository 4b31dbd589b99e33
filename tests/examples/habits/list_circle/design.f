rtl/top.v
-f lists/one.f
