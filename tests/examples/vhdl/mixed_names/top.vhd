-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

-- Names that only one of the languages can write, and spellings that differ.
library ieee;
use ieee.std_logic_1164.all;

entity top is
    port (clk : in std_logic);
end entity;

architecture rtl of top is
    component \Odd.Name\ is
        port (i, \in/side\ : in std_logic);
    end component;
    component only_verilog is
        port (I : in std_logic);
    end component;
    signal Mixed, \esc/aped\ : std_logic;
begin
    \u/odd\  : \Odd.Name\ port map (i => Mixed, \in/side\ => clk);
    direct   : entity work.ONLY_VERILOG port map (i => \esc/aped\);
end architecture;
