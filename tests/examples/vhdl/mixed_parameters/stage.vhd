-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

library ieee;
use ieee.std_logic_1164.all;

entity stage is
    generic (
        W    : positive := 1;
        NAME : string := "";
        FAST : boolean := false;
        INIT : std_logic_vector(7 downto 0) := x"00"
    );
    port (clk : in std_logic; d : in std_logic_vector(W - 1 downto 0));
end entity;

architecture rtl of stage is
    signal q    : std_logic_vector(W - 1 downto 0);
    signal text : std_logic_vector(0 to NAME'length);
    signal ones : std_logic_vector(7 downto 0);
begin
    q <= d when rising_edge(clk);
    quick : if FAST generate
        signal is_fast : std_logic;
    begin
    end generate;
    bits : for k in INIT'range generate
        set : if INIT(k) = '1' generate
            ones(k) <= clk;
        end generate;
    end generate;
end architecture;
