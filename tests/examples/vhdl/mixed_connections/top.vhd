-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

-- Fields of records, numeric vectors, constants, expressions and conversions at a border.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity top is
    port (clk : in std_logic);
end entity;

architecture rtl of top is
    component gate is
        port (
            a, b : in  std_logic;
            v    : in  unsigned(2 downto 0);
            f    : in  std_ulogic;
            o    : out signed(1 downto 0);
            c    : in  std_logic := '1';
            n    : in  std_logic_vector(1 downto 0) := "00"
        );
    end component;
    type link_t is record
        valid : std_logic;
        data  : unsigned(2 downto 0);
        back  : signed(1 downto 0);
    end record;
    type links_t is array (0 to 1) of link_t;
    signal links : links_t;
    signal flag  : std_ulogic;
    signal v8    : std_logic_vector(7 downto 0);
begin
    links(0).valid <= clk;
    links(1).data(1) <= clk;
    g : for n in links'range generate
        u : gate
            port map (a => links(n).valid, b => clk, v => links(n).data, f => flag, o => links(n).back);
    end generate;
    w : gate
        port map (a => v8(7), b => not clk, v => unsigned(v8(4 downto 2)), f => '0', c => open,
                  std_logic_vector(o) => v8(1 downto 0), n => "10");
end architecture;
