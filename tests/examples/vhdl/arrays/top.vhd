-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

-- Arrays of vectors: a bus for each element, or one entry for a memory.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity top is
    port (clk : in std_logic; address : in unsigned(1 downto 0); d : in std_logic_vector(1 downto 0));
end entity;

architecture rtl of top is
    type row_t is array (natural range <>) of std_logic_vector(1 downto 0);
    type cube_t is array (0 to 1) of row_t(3 downto 2);
    type plane_t is array (1 downto 0, 0 to 2) of std_logic;
    type numbers_t is array (0 to 1) of integer range 0 to 3;
    type letters_t is array (0 to 1) of boolean;
    type item_t is record
        tag  : std_logic;
        data : row_t(0 to 1);
    end record;
    type items_t is array (0 to 1) of item_t;
    type wide_t is array (natural range <>) of std_logic_vector(1023 downto 0);
    type large_t is array (0 to 4) of std_logic_vector(1023 downto 0);
    constant HERE : natural := 1;
    signal fixed   : row_t(0 to 2);
    signal cube    : cube_t;
    signal plane   : plane_t;
    signal numbers : numbers_t;
    signal letters : letters_t;
    signal written : row_t(0 to 3);
    signal read    : row_t(0 to 3);
    signal inner   : item_t;
    signal items   : items_t;
    signal large   : large_t;
    signal q       : std_logic_vector(1 downto 0);
    signal sum     : natural range 0 to 3;
begin
    fixed(HERE)         <= d;
    fixed(HERE + 1)(0)  <= clk;
    cube(1)(2)(1)       <= clk;
    plane(0, 1)         <= clk;
    numbers(1)          <= sum;
    large(0)            <= (others => '0');
    q                   <= read(to_integer(address));
    process (clk)
        variable index : natural range 0 to 1;
    begin
        if rising_edge(clk) then
            written(to_integer(address)) <= d;
            index := to_integer(address) mod 2;
            inner.data(index)            <= d;
            items(index).tag             <= '1';
        end if;
    end process;
end architecture;
