// Paths by variables, in the three ways of writing them.
$PROJECT_ROOT/rtl/top.v
${PROJECT_ROOT}/rtl/stage.v
$(PROJECT_ROOT)/$LIBRARY_NAME/delay.v
+incdir+$PROJECT_ROOT/inc
