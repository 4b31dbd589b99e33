-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

-- A unit of one name in both languages: each language takes its own.
library ieee;
use ieee.std_logic_1164.all;

entity top is
    port (clk : in std_logic);
end entity;

architecture rtl of top is
    component common is
        port (i : in std_logic);
    end component;
    component caller is
        port (i : in std_logic);
    end component;
begin
    u_common : common port map (i => clk);
    u_caller : caller port map (i => clk);
end architecture;
