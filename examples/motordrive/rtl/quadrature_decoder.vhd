-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

library dsp;
use dsp.dsp_pkg.all;

-- Follows a quadrature encoder: position within a turn, steps in the last sample period, and the
-- number of impossible transitions.
entity quadrature_decoder is
    generic (
        STEPS_PER_TURN : positive := 1024;
        SYNC_STAGES    : positive := 2
    );
    port (
        Clk      : in  std_logic;
        Reset_n  : in  std_logic;
        Tick     : in  std_logic;
        A        : in  std_logic;
        B        : in  std_logic;
        Position : out natural range 0 to STEPS_PER_TURN - 1;
        Speed    : out sample_t;
        Errors   : out natural range 0 to 255
    );
end entity;

architecture rtl of quadrature_decoder is

    -- The encoder lines A and B.
    subtype lines_t is std_logic_vector(1 downto 0);

    type lines_array_t is array (natural range <>) of lines_t;

    -- The number of a quarter period.
    subtype quarter_t is unsigned(1 downto 0);

    function quarter_of(Lines : lines_t) return quarter_t is
    begin
        return Lines(1) & (Lines(1) xor Lines(0));
    end function;

    -- Elements 1 to SYNC_STAGES synchronise the lines, the last one holds the previous lines.
    signal History : lines_array_t(1 to SYNC_STAGES + 1);
    signal Change  : quarter_t;
    signal Step    : integer range -1 to 1;
    signal Count   : integer range -SAMPLE_MAX to SAMPLE_MAX;

begin

    Change <= quarter_of(History(SYNC_STAGES)) - quarter_of(History(SYNC_STAGES + 1));

    with Change select Step <=
        1 when "01",
        -1 when "11",
        0 when others;

    Synchronise : process (Clk, Reset_n)
    begin
        if Reset_n = '0' then
            History <= (others => (others => '0'));
        elsif rising_edge(Clk) then
            History <= (A & B) & History(1 to SYNC_STAGES);
        end if;
    end process;

    Follow : process (Clk, Reset_n)
    begin
        if Reset_n = '0' then
            Position <= 0;
            Errors   <= 0;
        elsif rising_edge(Clk) then
            Position <= (Position + Step) mod STEPS_PER_TURN;
            if Change = "10" and Errors /= 255 then
                Errors <= Errors + 1;
            end if;
        end if;
    end process;

    -- A step in the clock of the tick belongs to the next period.
    Measure : process (Clk, Reset_n)
    begin
        if Reset_n = '0' then
            Count <= 0;
            Speed <= (others => '0');
        elsif rising_edge(Clk) then
            if Tick = '1' then
                Speed <= to_signed(Count, sample_t'length);
                Count <= Step;
            elsif Count + Step <= SAMPLE_MAX and Count + Step >= -SAMPLE_MAX then
                Count <= Count + Step;
            end if;
        end if;
    end process;

end architecture;
