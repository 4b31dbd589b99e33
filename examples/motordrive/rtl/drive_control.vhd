-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

library dsp;
use dsp.dsp_pkg.all;

use work.motor_pkg.all;

-- State machine of the drive: charges the supplies of the upper gates, then moves the set speed up
-- and down along a ramp. A fault turns everything off at once.
entity drive_control is
    generic (
        CHARGE_TICKS : positive := 10;
        RAMP_STEP    : positive := 1
    );
    port (
        Clk             : in  std_logic;
        Reset_n         : in  std_logic;
        Tick            : in  std_logic;
        Command         : in  command_t;
        Fault           : in  std_logic;
        State           : out drive_state_t;
        Setpoint        : out sample_t;
        GateEnable      : out std_logic;
        ModulatorEnable : out std_logic
    );
end entity;

architecture rtl of drive_control is

    subtype speed_t is integer range -SAMPLE_MAX to SAMPLE_MAX;

    signal Target  : speed_t;
    signal Ramp    : speed_t;
    signal Charged : natural range 0 to CHARGE_TICKS;

    -- One step from Present towards Goal.
    function approached(Present, Goal : speed_t) return speed_t is
    begin
        if Goal > Present then
            return minimum(Present + RAMP_STEP, Goal);
        end if;
        return maximum(Present - RAMP_STEP, Goal);
    end function;

begin

    Setpoint        <= to_signed(Ramp, sample_t'length);
    ModulatorEnable <= '1' when State = Running or State = Stopping else '0';
    GateEnable      <= '1' when State = Starting or ModulatorEnable = '1' else '0';

    Target <= 0 when State /= Running else
              -to_integer(Command.Speed) when Command.Backward = '1' else
              to_integer(Command.Speed);

    Advance : process (Clk, Reset_n)
    begin
        if Reset_n = '0' then
            State <= Idle;
        elsif rising_edge(Clk) then
            if Fault = '1' then
                State <= Faulted;
            elsif State = Faulted then
                State <= Idle;
            elsif Tick = '1' then
                case State is
                    when Idle =>
                        if Command.Enable = '1' then
                            State <= Starting;
                        end if;
                    when Starting =>
                        if Command.Enable = '0' then
                            State <= Idle;
                        elsif Charged = CHARGE_TICKS then
                            State <= Running;
                        end if;
                    when Running =>
                        if Command.Enable = '0' then
                            State <= Stopping;
                        end if;
                    when others =>
                        if Command.Enable = '1' then
                            State <= Running;
                        elsif Ramp = 0 then
                            State <= Idle;
                        end if;
                end case;
            end if;
        end if;
    end process;

    Count : process (Clk, Reset_n)
    begin
        if Reset_n = '0' then
            Charged <= 0;
            Ramp    <= 0;
        elsif rising_edge(Clk) then
            if State /= Starting then
                Charged <= 0;
            elsif Tick = '1' and Charged /= CHARGE_TICKS then
                Charged <= Charged + 1;
            end if;
            if ModulatorEnable = '0' then
                Ramp <= 0;
            elsif Tick = '1' then
                Ramp <= approached(Ramp, Target);
            end if;
        end if;
    end process;

end architecture;
