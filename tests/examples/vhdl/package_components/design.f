rtl/top.vhd
--work cells
cells/cells.vhd
