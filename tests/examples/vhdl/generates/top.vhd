-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

-- Nets of generate statements have local names with dots; variables of the loops are no nets.
library ieee;
use ieee.std_logic_1164.all;

entity leaf is
    port (i : in std_logic; o : out std_logic);
end entity;

architecture rtl of leaf is
    signal spare : std_logic;
begin
    o <= not i;
end architecture;

library ieee;
use ieee.std_logic_1164.all;

entity top is
    generic (STAGES : natural := 2; MODE : string := "FAST");
    port (clk : in std_logic; q : out std_logic_vector(STAGES downto 0));
end entity;

architecture rtl of top is
    signal chain : std_logic_vector(0 to STAGES);
begin
    chain(0) <= clk;

    g : for n in 0 to STAGES - 1 generate
        signal n_net : std_logic;
    begin
        h : for m in 3 downto 2 generate
            signal w : std_logic_vector(m downto 0);
        begin
            w(n) <= clk;
            u : entity work.leaf port map (i => chain(n), o => w(m));
        end generate;
        last : if n = STAGES - 1 generate
            signal flag : std_logic;
        begin
            flag <= clk;
        end generate;
        chain(n + 1) <= n_net;
    end generate;

    choice : if MODE = "SLOW" generate
        signal slow : std_logic;
    begin
    elsif MODE = "FAST" generate
        signal fast : std_logic;
    begin
    else generate
        signal other : std_logic;
    begin
    end generate;

    named : if first : STAGES > 5 generate
        signal many : std_logic;
    begin
    end first;
    else rest : generate
        signal few : std_logic;
    begin
        few <= clk;
    end rest;
    end generate;

    old : for k in 5 to 5 generate
        x : entity work.leaf port map (clk, q(1));
    end generate old;

    never : for k in 1 to 0 generate
        signal gone : std_logic;
    begin
    end generate;
end architecture;
