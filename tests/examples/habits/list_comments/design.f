// The list of the block.
# The same in another tool.
/* rtl/none.v
   rtl/nothing.v */
"my rtl/top.v"   // in quotes: the folder has a blank
+incdir+rtl \
rtl/add.v # the adder
-D WIDTH=3 \
-D DEBUG /* for the bench */
