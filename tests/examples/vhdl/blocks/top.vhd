-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

-- A block is a scope of the local names, with ports or without.
library ieee;
use ieee.std_logic_1164.all;

entity top is
    port (clk : in std_logic; q : out std_logic);
end entity;

architecture rtl of top is
    signal outer : std_logic;
    signal bus_o : std_logic_vector(3 downto 0);
begin
    plain : block is
        signal s : std_logic;
        signal t : std_logic_vector(1 downto 0);
    begin
        s <= clk;
        deep : block
            signal s : std_logic;
        begin
            t(0) <= s;
        end block;
        g : for n in 0 to 1 generate
            inner : block
                signal n_s : std_logic;
            begin
                n_s <= t(n);
            end block;
        end generate;
    end block plain;

    ported : block
        generic (W : positive := 1);
        generic map (W => 2);
        port (i : in std_logic; o : out std_logic_vector(W - 1 downto 0); z : in std_logic := '0'; y, x : in std_logic);
        port map (i => outer, o => bus_o(2 downto 1), y => clk, x => '1');
        signal own : std_logic_vector(W downto 0);
    begin
        o <= (others => i);
        own(W) <= i;
    end block;
    q <= bus_o(2);
end architecture;
