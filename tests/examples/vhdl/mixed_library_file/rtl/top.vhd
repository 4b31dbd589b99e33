-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

-- Library files give what the sources lack, in both languages, and nothing else.
library ieee;
use ieee.std_logic_1164.all;

entity top is
    port (clk : in std_logic);
end entity;

architecture rtl of top is
    component from_verilog is
        port (i : in std_logic);
    end component;
begin
    u : from_verilog port map (i => clk);
    v : entity work.from_vhdl port map (i => clk);
end architecture;
