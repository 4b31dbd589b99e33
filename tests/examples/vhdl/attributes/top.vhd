-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

-- Signals that attributes and guards imply are no nets.
library ieee;
use ieee.std_logic_1164.all;

entity top is
    port (clk : in std_logic; d : in bit);
end entity;

architecture rtl of top is
    signal late, rise, was, calm, busy, toggled : std_logic;
    signal level : bit;
begin
    late    <= clk'delayed(2 ns);
    rise    <= '1' when clk'event else '0';
    was     <= clk'last_value;
    calm    <= '1' when clk'stable(3 ns) and clk'quiet(1 ns) else '0';
    toggled <= '1' when d'transaction = '1' else '0';
    guards : block (clk = '1')
        signal inside : std_logic;
    begin
        inside <= guarded clk;
        level  <= '1' when guard else '0';
    end block;
end architecture;
