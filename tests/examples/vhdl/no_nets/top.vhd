-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

-- What is declared beside signals is no net; what has no hardware value is excluded for both uses.
library ieee;
use ieee.std_logic_1164.all;

package globals is
    signal everywhere : std_logic;
    constant LIMIT    : integer := 3;
    constant LATER    : std_logic_vector;
end package;

package body globals is
    constant LATER : std_logic_vector := "10";
end package body;

library ieee;
use ieee.std_logic_1164.all;
use std.textio.all;
use work.globals.all;

entity top is
    port (clk : in std_logic; q : out std_logic_vector(LATER'range));
end entity;

architecture rtl of top is
    type counter_t is protected
        procedure count;
        impure function value return integer;
    end protected;
    type counter_t is protected body
        variable n : integer := 0;
        procedure count is
        begin
            n := n + 1;
        end procedure;
        impure function value return integer is
        begin
            return n;
        end function;
    end protected body;
    type link_t is access integer;
    shared variable counter : counter_t;
    constant WIDTH : positive := 2;
    signal s       : std_logic_vector(WIDTH - 1 downto 0);
    signal seconds : time;
    signal factor  : real;
    signal message : string(1 to 4);
    type times_t is array (0 to 1) of time;
    signal times   : times_t;
    alias high is s(1);
    alias low : std_logic is s(0);
    alias vector : std_logic_vector(0 to 1) is s;
    signal from_function, from_procedure, seen : std_logic;
    function invert(signal v : std_logic) return std_logic is
        variable local : std_logic;
    begin
        local := not v;
        return local;
    end function;
    procedure drive(signal o : out std_logic; value : in std_logic) is
        variable local : std_logic;
    begin
        local := value;
        o <= local;
    end procedure;
begin
    high <= clk;
    everywhere <= clk;
    from_function <= invert(seen);
    process (clk)
        variable state : integer range 0 to 3;
        variable bits  : std_logic_vector(3 downto 0);
        variable link  : link_t;
        variable line1 : line;
        file log       : text;
    begin
        if rising_edge(clk) then
            state := (state + 1) mod 4;
            counter.count;
            drive(from_procedure, clk);
        end if;
    end process;
end architecture;
