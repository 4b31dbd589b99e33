-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

library ieee;
use ieee.std_logic_1164.all;

entity cell_e is
    port (clk : in std_logic; data : in std_logic_vector(1 downto 0); ready : out std_logic);
end entity;

architecture rtl of cell_e is
begin
    ready <= data(0) when rising_edge(clk);
end architecture;
