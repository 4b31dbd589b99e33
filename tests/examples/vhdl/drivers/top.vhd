-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

-- What drives a bit: processes, assignments, ports; several drivers; initial values drive nothing.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity buffered is
    port (
        clk : in     std_logic;
        b   : buffer std_logic_vector(1 downto 0);
        o   : out    std_logic;
        io  : inout  std_logic_vector(1 downto 0);
        l   : linkage std_logic
    );
end entity;

architecture rtl of buffered is
    signal read_back : std_logic;
begin
    b(0)      <= not b(0) when rising_edge(clk);
    o         <= clk;
    read_back <= o;
    io(1)     <= clk;
end architecture;

library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity top is
    port (
        clk   : in     std_logic;
        sel   : in     unsigned(1 downto 0);
        pad   : inout  std_logic;
        pads  : inout  std_logic_vector(1 downto 0);
        q     : buffer std_logic;
        never : out    std_logic_vector(1 downto 0) := "00"
    );
end entity;

architecture rtl of top is
    function any(v : bit_vector) return bit is
    begin
        for n in v'range loop
            if v(n) = '1' then
                return '1';
            end if;
        end loop;
        return '0';
    end function;
    subtype any_bit is any bit;
    signal initial_only : std_logic_vector(1 downto 0) := "01";
    signal three        : std_logic;
    attribute keep      : string;
    attribute keep of three : signal is "true";
    signal own_resolved : any_bit;
    signal on_guard     : any_bit bus;
    signal registered   : any_bit register;
    signal unresolved   : std_ulogic;
    signal by_case      : std_logic_vector(2 downto 0);
    signal selected     : std_logic_vector(2 downto 0);
    signal aggregate    : std_logic_vector(3 downto 0);
    signal forced       : std_logic;
    signal late         : std_logic;
    signal by_others    : std_logic_vector(1 downto 0);
    signal b            : std_logic_vector(1 downto 0);
    signal io           : std_logic_vector(1 downto 0);
    signal l, o         : std_logic;
    signal loops        : std_logic_vector(3 downto 0);
    signal gens         : std_logic_vector(3 downto 0);
begin
    three        <= clk;
    three        <= 'Z' when sel = 0 else '0';
    three        <= '1';
    own_resolved <= '1';
    unresolved   <= clk;
    late         <= transport clk after 3 ns;
    by_others    <= (others => '0');
    (aggregate(3), aggregate(0)) <= std_logic_vector'(clk & clk);
    with sel select selected(1 downto 0) <= "01" when "00", "10" when others;

    guards : block (clk = '1')
    begin
        on_guard <= guarded '1';
    end block;

    process (all)
    begin
        case sel is
            when "00"   => by_case(0) <= clk;
            when "01"   => by_case(2) <= '1';
            when others => null;
        end case;
    end process;

    process
    begin
        wait until rising_edge(clk);
        for n in 1 to 2 loop
            loops(n) <= '1';
        end loop;
        q <= not q;
    end process;

    g : for n in 1 to 2 generate
        gens(n) <= clk;
    end generate;

    u : entity work.buffered port map (clk => clk, b => b, o => o, io => io, l => l);
end architecture;
