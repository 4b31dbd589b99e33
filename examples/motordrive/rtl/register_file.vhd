-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

use work.motor_pkg.all;

-- Registers of the drive on a bus with one clock of latency. Registers 1 to 3 can be written.
entity register_file is
    port (
        Clk       : in  std_logic;
        Reset_n   : in  std_logic;
        WriteBus  : in  std_logic;
        Address   : in  unsigned(2 downto 0);
        WriteData : in  word_t;
        ReadData  : out word_t;
        Command   : out command_t;
        Status    : in  status_t
    );
end entity;

architecture rtl of register_file is

    constant IDENTITY : word_t := x"4D44";

    constant REG_IDENTITY : natural := 0;
    constant REG_CONTROL  : natural := 1;
    constant REG_SPEED    : natural := 2;
    constant REG_GAINS    : natural := 3;
    constant REG_STATE    : natural := 4;
    constant REG_MEASURED : natural := 5;
    constant REG_POSITION : natural := 6;

    subtype writable_t is natural range REG_CONTROL to REG_GAINS;

    signal Stored : word_array_t(writable_t);
    signal Index  : natural range 0 to 7;

    function state_word(Value : status_t) return word_t is
    begin
        return (7 downto 0 => '0') & Value.Fault
            & std_logic_vector(to_unsigned(drive_state_t'pos(Value.State), 7));
    end function;

begin

    Index <= to_integer(Address);

    Command.Enable             <= Stored(REG_CONTROL)(0);
    Command.Backward           <= Stored(REG_CONTROL)(1);
    Command.ClearFault         <= Stored(REG_CONTROL)(2);
    Command.Speed              <= unsigned(Stored(REG_SPEED)(Command.Speed'range));
    Command.Gains.Proportional <= unsigned(Stored(REG_GAINS)(15 downto 8));
    Command.Gains.Integral     <= unsigned(Stored(REG_GAINS)(7 downto 0));

    Write : process (Clk, Reset_n)
    begin
        if Reset_n = '0' then
            Stored <= (others => (others => '0'));
        elsif rising_edge(Clk) then
            -- The order to clear a fault holds for one clock.
            Stored(REG_CONTROL)(2) <= '0';
            if WriteBus = '1' and Index >= writable_t'low and Index <= writable_t'high then
                Stored(Index) <= WriteData;
            end if;
        end if;
    end process;

    Read : process (Clk)
    begin
        if rising_edge(Clk) then
            case Index is
                when REG_IDENTITY => ReadData <= IDENTITY;
                when writable_t   => ReadData <= Stored(Index);
                when REG_STATE    => ReadData <= state_word(Status);
                when REG_MEASURED => ReadData <= word_t(resize(Status.Speed, word_t'length));
                when REG_POSITION => ReadData <= Status.Position;
                when others       => ReadData <= Status.Errors;
            end case;
        end if;
    end process;

end architecture;
