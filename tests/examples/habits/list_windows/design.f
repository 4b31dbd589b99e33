// From an editor that ends lines with two characters.
+incdir+inc
+define+WIDTH=2

rtl/top.v
rtl/sub.v
