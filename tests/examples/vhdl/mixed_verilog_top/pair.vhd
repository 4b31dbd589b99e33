-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

library ieee;
use ieee.std_logic_1164.all;

entity Pair is
    port (
        Clk  : in  std_logic;
        Din  : in  std_logic_vector(1 downto 0);
        Dout : out std_logic_vector(1 downto 0)
    );
end entity;

architecture rtl of pair is
    component delay is
        port (c, d : in std_logic; q : out std_logic);
    end component;
    signal Held : std_logic_vector(1 downto 0);
begin
    Lanes : for n in 0 to 1 generate
        u_delay : delay port map (c => clk, d => din(n), q => held(n));
    end generate;
    dout(1) <= held(1);
end architecture;
