-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

-- A net or a bus for each field, in the order of the fields.
library ieee;
use ieee.std_logic_1164.all;

package types is
    type state_t is (idle, busy, done);
    type head_t is record
        address : std_logic_vector(3 downto 0);
        state   : state_t;
    end record;
    type pair_t is array (0 to 1) of std_logic_vector(1 downto 0);
    type request_t is record
        head  : head_t;
        valid : std_logic;
        data  : pair_t;
        count : natural range 0 to 9;
        ratio : real;
    end record;
    type requests_t is array (natural range <>) of request_t;
    type point_t is record
        x, y : std_logic;
    end record;
    type points_t is array (1 downto 0) of point_t;
    type grid_t is array (0 to 1, 5 downto 4) of point_t;
    type box_t is record
        corner : points_t;
        open1  : boolean;
    end record;
    type free_t is record
        d : std_logic_vector;
        e : std_logic;
    end record;
end package;

library ieee;
use ieee.std_logic_1164.all;
use work.types.all;

entity top is
    port (clk : in std_logic; req : in request_t; head : out head_t);
end entity;

architecture rtl of top is
    signal held   : requests_t(1 downto 0);
    signal box    : box_t;
    signal grid   : grid_t;
    signal free   : free_t(d(2 downto 0));
    signal point  : point_t;
begin
    head.address <= req.head.address;
    process (clk)
    begin
        if rising_edge(clk) then
            held(0)            <= req;
            held(1).data(0)(1) <= '1';
            box.corner(1).y    <= clk;
            grid(1, 4)         <= point;
            free.d(1)          <= '1';
        end if;
    end process;
end architecture;
