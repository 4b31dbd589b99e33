-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

library ieee;
use ieee.std_logic_1164.all;

package cell_components is
    component flip is
        port (clk, d : in std_logic; q : out std_logic);
    end component;
    component wide_flip is
        generic (WIDTH : positive);
        port (clk : in std_logic; d : in std_logic_vector(WIDTH - 1 downto 0);
              q : out std_logic_vector(WIDTH - 1 downto 0));
    end component;
    function clog2(n : positive) return natural;
end package;

package body cell_components is
    function clog2(n : positive) return natural is
        variable bits : natural := 0;
    begin
        while 2 ** bits < n loop
            bits := bits + 1;
        end loop;
        return bits;
    end function;
end package body;

library ieee;
use ieee.std_logic_1164.all;

entity flip is
    port (clk, d : in std_logic; q : out std_logic);
end entity;

architecture rtl of flip is
begin
    q <= d when rising_edge(clk);
end architecture;

library ieee;
use ieee.std_logic_1164.all;
use work.cell_components.all;

entity wide_flip is
    generic (WIDTH : positive);
    port (clk : in std_logic; d : in std_logic_vector(WIDTH - 1 downto 0);
          q : out std_logic_vector(WIDTH - 1 downto 0));
end entity;

architecture rtl of wide_flip is
begin
    bits : for n in d'range generate
        u : flip port map (clk, d(n), q(n));
    end generate;
end architecture;
