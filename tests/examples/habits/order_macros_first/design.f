// No file includes the macros; the list has them first.
defines.v
rtl/top.v
rtl/sub.v
