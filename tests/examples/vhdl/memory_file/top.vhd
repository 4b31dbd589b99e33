-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

-- A function reads the first content of a memory from a file in the folder of the project.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;
use std.textio.all;

entity top is
    port (clk : in std_logic; a : in unsigned(0 downto 0); q : out std_logic_vector(3 downto 0));
end entity;

architecture rtl of top is
    type rom_t is array (0 to 1) of std_logic_vector(3 downto 0);
    impure function content(name : string) return rom_t is
        file source    : text open read_mode is name;
        variable words : line;
        variable word  : bit_vector(3 downto 0);
        variable rom   : rom_t;
    begin
        for n in rom'range loop
            readline(source, words);
            read(words, word);
            rom(n) := to_stdlogicvector(word);
        end loop;
        return rom;
    end function;
    signal rom : rom_t := content("rom.txt");
begin
    q <= rom(to_integer(a)) when rising_edge(clk);
end architecture;
