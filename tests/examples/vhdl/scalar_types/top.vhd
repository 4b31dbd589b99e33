-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

-- A net of every type that is no array and no record.
library ieee;
use ieee.std_logic_1164.all;

entity top is
    port (
        clk   : in  std_logic;
        go    : in  boolean;
        level : in  natural range 0 to 5;
        done  : out bit;
        open1 : out std_ulogic
    );
end entity;

architecture rtl of top is
    type lone_t is (only);
    type pair_t is (off, on_state);
    type trio_t is (red, amber, green);
    type nine_t is (a, b, c, d, e, f, g, h, i);
    type chars_t is ('x', 'y', 'z', other, ''');
    subtype warm_t is trio_t range red to amber;
    type signed_t is range -5 to 4;
    type down_t is range 9 downto 2;
    subtype small_t is integer range 0 to 1;
    signal lone     : lone_t;
    signal pair     : pair_t;
    signal trio     : trio_t;
    signal nine     : nine_t;
    signal chars    : chars_t;
    signal warm     : warm_t;
    signal flag     : boolean;
    signal b1       : bit;
    signal u1       : std_ulogic := '0';
    signal x1       : x01;
    signal letter   : character;
    signal sev      : severity_level;
    signal whole    : integer;
    signal nat      : natural;
    signal posi     : positive;
    signal zero     : integer range 0 to 0;
    signal one      : small_t;
    signal five     : integer range 0 to 5;
    signal eight    : integer range 0 to 8;
    signal fixed    : integer range 6 to 6;
    signal minus    : integer range -1 to 0;
    signal byte     : integer range -128 to 127;
    signal below    : integer range -9 to -3;
    signal sig      : signed_t;
    signal down     : down_t;
    signal number   : real;
    signal ratio    : real range 0.0 to 1.0;
    signal moment   : time;
    signal wait_t   : delay_length;
    signal text     : string(1 to 3);
begin
    process (clk)
    begin
        if rising_edge(clk) then
            trio <= green;
            five <= level;
            byte <= -level;
        end if;
    end process;
    done <= '1' when go else '0';
    flag <= go;
    text <= "abc";
end architecture;
