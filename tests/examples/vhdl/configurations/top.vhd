-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

-- Architectures and bindings chosen by instances, by declarations and by configurations.
library ieee;
use ieee.std_logic_1164.all;

entity cell is
    generic (W : positive := 1);
    port (i : in std_logic);
end entity;

architecture first of cell is
    signal in_first : std_logic_vector(W - 1 downto 0);
begin
end architecture;

architecture second of cell is
    signal in_second : std_logic;
begin
end architecture;

library ieee;
use ieee.std_logic_1164.all;

entity holder is
    port (i : in std_logic);
end entity;

architecture rtl of holder is
    component cell is
        generic (W : positive := 1);
        port (i : in std_logic);
    end component;
begin
    u : cell port map (i => i);
    v : cell generic map (W => 2) port map (i => i);
end architecture;

configuration special of holder is
    for rtl
        for u : cell use entity work.cell(first) generic map (W => 3); end for;
    end for;
end configuration;

library ieee;
use ieee.std_logic_1164.all;

entity top is
    port (clk : in std_logic);
end entity;

architecture rtl of top is
    component cell is
        generic (W : positive := 1);
        port (i : in std_logic);
    end component;
    component part is
        port (pin : in std_logic);
    end component;
    for bound : cell use entity work.cell(first);
    for all : part use entity work.cell(first) generic map (W => 2) port map (i => pin);
    component holder_c is
        port (i : in std_logic);
    end component;
    for held : holder_c use configuration work.special;
begin
    direct_first  : entity work.cell(first) port map (clk);
    direct_second : entity work.cell(second) port map (clk);
    latest        : entity work.cell port map (clk);
    bound         : cell port map (clk);
    unbound_here  : cell port map (clk);
    p1            : part port map (clk);
    by_config     : configuration work.special port map (clk);
    held          : holder_c port map (clk);
end architecture;
