-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

library ieee;
use ieee.std_logic_1164.all;

entity common is
    port (i : in std_logic);
end entity;

architecture rtl of common is
    signal in_vhdl : std_logic;
begin
end architecture;
