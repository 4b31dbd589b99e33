+incdir+inc+inc/cfg
-Iother -I last
rtl/top.v
