-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

-- Instantiates the cell of its own library.
library ieee;
use ieee.std_logic_1164.all;

entity helper is
    port (i : in std_logic_vector(1 downto 0));
end entity;

architecture rtl of helper is
    component cell is
        port (i : in std_logic_vector(1 downto 0));
    end component;
begin
    by_work      : entity work.cell port map (i);
    by_component : cell port map (i);
end architecture;
