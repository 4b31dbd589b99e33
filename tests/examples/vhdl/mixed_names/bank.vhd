-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

library ieee;
use ieee.std_logic_1164.all;

entity Reg_Bank is
    port (Signal1 : in std_logic; wire1 : out std_logic; \Ext-Port\ : in std_logic);
end entity;

architecture rtl of REG_BANK is
    signal Reg : std_logic;
begin
    REG   <= signal1;
    WIRE1 <= reg;
end architecture;
