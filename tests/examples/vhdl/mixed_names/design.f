top.vhd
modules.v
bank.vhd
