-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

-- VHDL over Verilog over VHDL over Verilog. Marks cross each border bit by bit.
library ieee;
use ieee.std_logic_1164.all;

entity top is
    port (clk : in std_logic; d : in std_logic_vector(1 downto 0));
end entity;

architecture rtl of top is
    component filter is
        port (
            clk    : in    std_logic;
            sample : in    std_logic_vector(3 downto 0);
            spare  : in    std_logic;
            result : out   std_logic_vector(0 to 1);
            pad    : inout std_logic
        );
    end component;
    signal sample : std_logic_vector(3 downto 0);
    signal result : std_logic_vector(4 downto 1);
    signal pad, spare : std_logic;
begin
    sample(2 downto 1) <= d;
    u_filter : filter
        port map (clk => clk, sample => sample, spare => spare, result => result(3 downto 2), pad => pad);
end architecture;
