-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

-- Alternatives of case generate statements, with labels and without, nested in others.
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
    generic (STAGES : natural := 2);
    port (clk : in std_logic; q : out std_logic);
end entity;

architecture rtl of top is
    type kind_t is (none, some, all_of_them);
    constant KIND : kind_t := some;
begin
    pick : case KIND generate
        when none =>
            signal empty : std_logic;
        begin
        when some | all_of_them =>
            signal full : std_logic_vector(1 downto 0);
        begin
            full(1) <= clk;
            v : entity work.leaf port map (i => full(0), o => q);
    end generate;

    size : case STAGES generate
        when two : 2 =>
            signal exact : std_logic;
        begin
        end two;
        when others =>
            signal off : std_logic;
        begin
    end generate;

    outer : for n in 0 to 2 generate
        inner : case n generate
            when 0 =>
                signal zero : std_logic;
            begin
            when 1 to 2 =>
                deep : case KIND generate
                    when some =>
                        signal w : std_logic_vector(n downto 0);
                    begin
                        w(n) <= clk;
                    when others =>
                end generate;
        end generate inner;
    end generate;
end architecture;
