rtl/top.v

${NOBODY_SETS_THIS}/rtl/stage.v
