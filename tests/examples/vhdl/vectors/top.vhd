-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

-- Every form of a range, left to right as declared. A null range is one excluded net.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity top is
    generic (LEFT : integer := 2);
    port (
        clk  : in    std_logic;
        d    : in    std_logic_vector(7 downto 0);
        q    : out   std_logic_vector(0 to 3);
        bus1 : inout std_logic_vector(LEFT downto 1)
    );
end entity;

architecture rtl of top is
    type color_t is (red, amber, green);
    type by_color_t is array (color_t range <>) of std_logic;
    type by_flag_t is array (boolean) of bit;
    type flags_t is array (natural range <>) of boolean;
    type wide_t is array (integer range <>) of std_ulogic;
    signal down     : std_logic_vector(3 downto 0);
    signal up       : std_logic_vector(0 to 3);
    signal offset   : std_logic_vector(6 downto 5);
    signal one      : std_logic_vector(0 downto 0);
    signal seven    : std_logic_vector(7 to 7);
    signal none     : std_logic_vector(0 downto 1);
    signal nothing  : std_logic_vector(-1 downto 0);
    signal negative : wide_t(1 downto -1);
    signal rising   : wide_t(-2 to -1);
    signal u        : unsigned(LEFT downto 0);
    signal s        : signed(0 to LEFT);
    signal su       : std_ulogic_vector(1 downto 0);
    signal bv       : bit_vector(1 to 2);
    signal flags    : flags_t(3 downto 2);
    signal colors   : by_color_t(red to green);
    signal by_flag  : by_flag_t;
    subtype nibble_t is std_logic_vector(3 downto 0);
    signal nib      : nibble_t;
    signal part     : std_logic_vector(7 downto 0);
    signal dynamic  : std_logic_vector(3 downto 0);
    signal looped   : std_logic_vector(0 to 2);
    signal sliced   : unsigned(0 to 5);
begin
    q(1)             <= d(0);
    part(1 downto 0) <= d(1 downto 0);
    part(5)          <= clk;
    sliced(2 to 3)   <= unsigned(d(3 downto 2));
    negative(-1)     <= clk;
    colors(amber)    <= clk;
    by_flag(true)    <= '1';

    process (clk)
    begin
        if rising_edge(clk) then
            dynamic(to_integer(unsigned(d(1 downto 0)))) <= '1';
            for n in looped'range loop
                looped(n) <= d(n);
            end loop;
            (nib(3), nib(1)) <= d(1 downto 0);
            u <= u + 1;
        end if;
    end process;
end architecture;
