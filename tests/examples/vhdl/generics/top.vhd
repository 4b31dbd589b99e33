-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

-- Generics of many types; one entity at several values.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

package shapes is
    type mode_t is (slow, fast);
    type sizes_t is array (natural range <>) of natural;
    type setup_t is record
        width : positive;
        mode  : mode_t;
    end record;
end package;

library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;
use work.shapes.all;

entity stage is
    generic (
        W      : positive := 1;
        MASK   : std_logic_vector := "01";
        NAME   : string := "";
        RATE   : real := 1.0;
        PERIOD : time := 1 ns;
        ON_OFF : boolean := false;
        MODE   : mode_t := slow;
        SIZES  : sizes_t := (1, 2);
        SETUP  : setup_t := (1, slow);
        LETTER : character := 'a';
        INIT   : unsigned(3 downto 0) := "0000"
    );
    port (clk : in std_logic);
end entity;

architecture rtl of stage is
    signal q      : std_logic_vector(W - 1 downto 0);
    signal masked : std_logic_vector(MASK'range);
    signal sized  : std_logic_vector(SIZES(SIZES'high) - 1 downto 0);
    signal long   : std_logic_vector(0 to NAME'length);
    signal rated  : std_logic_vector(1 to integer(RATE));
    signal steps  : std_logic_vector(PERIOD / 1 ns downto 1);
    signal setup1 : std_logic_vector(SETUP.width downto 1);
    signal init1  : std_logic_vector(to_integer(INIT) downto 0);
begin
    q <= not q when rising_edge(clk);
    on1 : if ON_OFF generate
        signal is_on : std_logic;
    begin
    end generate;
    fast1 : if MODE = fast or SETUP.mode = fast or LETTER = 'z' generate
        signal is_fast : std_logic;
    begin
    end generate;
    bits : for n in MASK'range generate
        set : if MASK(n) = '1' generate
            masked(n) <= clk;
        end generate;
    end generate;
end architecture;

library ieee;
use ieee.std_logic_1164.all;
use work.shapes.all;

entity top is
    port (clk : in std_logic);
end entity;

architecture rtl of top is
    component stage is
        generic (W : positive := 3; NAME : string := "abc");
        port (clk : in std_logic);
    end component;
begin
    plain : entity work.stage port map (clk);
    all_of_them : entity work.stage
        generic map (2, "101", "xy", 2.0, 3 ns, true, fast, (5, 4, 3), (4, slow), 'b', "0011")
        port map (clk);
    named : entity work.stage
        generic map (MASK => X"C", SETUP => (width => 2, mode => fast))
        port map (clk);
    from_component : stage port map (clk);
    set_component : stage generic map (W => 2) port map (clk);
end architecture;
