-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

library ieee;
use ieee.std_logic_1164.all;

entity leaf is
    port (
        clk : in  std_logic;
        d   : in  std_logic_vector(3 downto 0) := "0000";
        en  : in  std_logic := '1';
        q   : out std_logic_vector(3 downto 0);
        io  : inout std_logic
    );
end entity;

architecture rtl of leaf is
    signal part : std_logic_vector(1 downto 0);
begin
    q <= d when rising_edge(clk);
    io <= 'Z';
    part(1) <= en;
end architecture;
