-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

-- Every way to instantiate an entity and to connect its ports.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity top is
    port (clk : in std_logic; number : in unsigned(3 downto 0));
end entity;

architecture rtl of top is
    component leaf is
        port (
            clk : in  std_logic;
            d   : in  std_logic_vector(3 downto 0) := "0000";
            en  : in  std_logic := '1';
            q   : out std_logic_vector(3 downto 0);
            io  : inout std_logic
        );
    end component;
    component renamed is
        port (ck : in std_logic; din : in std_logic_vector(3 downto 0); dout : out std_logic_vector(3 downto 0));
    end component;
    for all : renamed use entity work.other(rtl)
        port map (clk => ck, d => din, q => dout);
    signal undriven, wide : std_logic_vector(3 downto 0);
    signal single, x, y, z : std_logic;
    signal q1, q2, q5, q6 : std_logic_vector(3 downto 0);
    signal q3             : std_logic_vector(7 downto 0);
    signal q4             : std_logic_vector(0 to 1);
    signal as_number      : unsigned(3 downto 0);
    signal io1            : std_logic;
begin
    u_entity : entity work.leaf(rtl)
        port map (clk => clk, d => undriven, en => single, q => q1, io => io1);
    u_component : leaf
        port map (clk, std_logic_vector(number), open, q2, io1);
    u_parts : component leaf
        port map (clk => clk, d => wide, q => q3(6 downto 3), io => open);
    u_elements : entity work.leaf
        port map (clk => clk, d(3) => x, d(2 downto 1) => wide(1 downto 0), d(0) => single,
                  q(3 downto 2) => q4, q(1) => z, q(0) => y, io => io1);
    u_constants : leaf
        port map (clk => '1', d => "0101", q => open, io => open);
    u_expression : leaf
        port map (clk => not clk, d => undriven and wide, en => undriven(0), q => q5, io => io1);
    u_renamed : renamed
        port map (ck => clk, din => undriven, dout => q6);
    u_conversion : entity work.other
        port map (clk => clk, d => undriven, unsigned(q) => as_number);
end architecture;
