-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

-- Ports without ranges take those of what they are connected to.
library ieee;
use ieee.std_logic_1164.all;

package grids is
    type grid_t is array (natural range <>) of std_logic_vector;
    type pack_t is record
        d : std_logic_vector;
    end record;
end package;

library ieee;
use ieee.std_logic_1164.all;
use work.grids.all;

entity any is
    port (
        i : in  std_logic_vector;
        o : out std_logic_vector;
        g : in  grid_t;
        p : in  pack_t
    );
end entity;

architecture rtl of any is
    signal same : std_logic_vector(i'range);
    signal long : std_logic_vector(o'length downto 0);
begin
    o <= (o'range => i(i'left));
end architecture;

library ieee;
use ieee.std_logic_1164.all;
use work.grids.all;

entity top is
    port (d : in std_logic_vector(0 to 1));
end entity;

architecture rtl of top is
    signal q     : std_logic_vector(4 downto 3);
    signal wide  : std_logic_vector(7 downto 0);
    signal grid  : grid_t(0 to 1)(1 downto 0);
    signal grid2 : grid_t(3 downto 3)(0 to 2);
    signal pack  : pack_t(d(1 downto 0));
    signal pack2 : pack_t(d(2 to 3));
begin
    grid(1)(0) <= d(0);
    u : entity work.any port map (i => d, o => q, g => grid, p => pack);
    v : entity work.any port map (i => wide(6 downto 5), o => wide(3 downto 1), g => grid2, p => pack2);
end architecture;
