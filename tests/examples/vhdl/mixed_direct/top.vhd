-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

-- Verilog modules instantiated directly, without a component.
library ieee;
use ieee.std_logic_1164.all;

entity top is
    port (clk : in std_logic; d : in std_logic_vector(3 downto 0));
end entity;

architecture rtl of top is
    signal sum   : std_logic_vector(3 downto 0);
    signal carry : std_logic;
    signal few   : std_logic_vector(1 downto 0);
    signal free  : std_logic_vector(1 downto 0);
begin
    by_position : entity work.adder
        generic map (4)
        port map (clk, d, sum, carry);
    by_name : entity work.Adder
        generic map (WIDTH => 2)
        port map (b => few, clk => carry, a => free, c => open);
    plain : entity work.adder
        port map (clk => clk, a => d(0 downto 0), b => open, c => open);
end architecture;
