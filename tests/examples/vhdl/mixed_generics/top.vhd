-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

-- Generics and parameters handed down, through two borders; one unit at several values.
library ieee;
use ieee.std_logic_1164.all;

entity top is
    generic (WIDE : positive := 3);
    port (clk : in std_logic);
end entity;

architecture rtl of top is
    component tuned is
        generic (
            W    : integer := 2;
            NAME : string := "none";
            FAST : boolean := false;
            MASK : std_logic_vector(3 downto 0) := "0001";
            RATE : real := 1.0
        );
        port (clk : in std_logic; d : in std_logic_vector);
    end component;
    signal d2 : std_logic_vector(1 downto 0);
    signal d3 : std_logic_vector(WIDE - 1 downto 0);
begin
    plain : tuned port map (clk => clk, d => d2);
    set : tuned
        generic map (W => WIDE, NAME => "full", FAST => true, MASK => "1010", RATE => 2.5)
        port map (clk => clk, d => d3);
    turns : for n in 1 to 2 generate
        u : tuned generic map (W => n, MASK => "0000") port map (clk => clk, d => d3(n - 1 downto 0));
    end generate;
end architecture;
