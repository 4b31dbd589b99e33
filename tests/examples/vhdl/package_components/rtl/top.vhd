-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

-- Components that a package of a library declares are bound to the entities of that library;
-- functions of packages give widths.
library ieee, cells;
use ieee.std_logic_1164.all;
use ieee.math_real.all;
use cells.cell_components.all;

entity top is
    port (clk : in std_logic; q : out std_logic_vector(2 downto 0));
end entity;

architecture rtl of top is
    constant WORDS : positive := 5;
    constant BITS  : positive := integer(ceil(log2(real(WORDS))));
    signal address : std_logic_vector(BITS - 1 downto 0);
    signal log     : std_logic_vector(clog2(WORDS) downto 1);
    component buffer_cell is
        port (i : in std_logic; o : out std_logic);
    end component;
begin
    u_flip : flip port map (clk => clk, d => address(0), q => q(0));
    u_wide : wide_flip generic map (WIDTH => 2) port map (clk, address(2 downto 1), q(2 downto 1));
end architecture;
