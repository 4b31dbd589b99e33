rtl/top.vhd
--work gates
lib/helper.vhd
lib/gates.vhd
--work work
rtl/cell.vhd
