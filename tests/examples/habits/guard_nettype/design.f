rtl/strict.v
rtl/lax.v
rtl/top.v
