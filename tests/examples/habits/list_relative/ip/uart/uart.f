# The block brings its own list: paths start in its folder.
+incdir+include
-F more.f
src/uart.v
