-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;
use ieee.math_real.all;

library std;
use std.env.finish;
use std.textio.all;

use work.motor_pkg.all;

-- Self-checking test of the motor drive. Plays the processor on the bus, the motor with its encoder,
-- and the current monitor. Ends with PASS or FAIL.
--
-- The signals that a debug core drives cannot be reached from here. DEBUG_DUTY and DEBUG_FAULT say
-- that their initial values in motor_top were changed: to force this duty, or a fault.
entity motor_tb is
    generic (
        SIX_STEP    : boolean := false;
        DEBUG_DUTY  : integer := -1;
        DEBUG_FAULT : boolean := false
    );
end entity;

architecture test of motor_tb is

    constant CLOCK_PERIOD   : time     := 20 ns;
    constant CLOCK_HZ       : positive := 50_000_000;
    constant DUTY_BITS      : positive := 6;
    constant PWM_CLOCKS     : positive := 2 * (2 ** DUTY_BITS - 1);
    constant TICK_CLOCKS    : positive := 8 * PWM_CLOCKS;
    constant STEPS_PER_TURN : positive := 64;
    constant DEAD_CLOCKS    : positive := 2;

    constant REG_IDENTITY : natural := 0;
    constant REG_CONTROL  : natural := 1;
    constant REG_SPEED    : natural := 2;
    constant REG_GAINS    : natural := 3;
    constant REG_STATE    : natural := 4;
    constant REG_MEASURED : natural := 5;
    constant REG_POSITION : natural := 6;
    constant REG_ERRORS   : natural := 7;

    -- Values of the registers for control and state.
    constant FORWARDS       : natural := 1;
    constant STOP_BACKWARDS : natural := 2;
    constant BACKWARDS      : natural := 3;
    constant CLEAR_FAULT    : natural := 4;

    constant STATE_IDLE     : natural := 0;
    constant STATE_STARTING : natural := 1;
    constant STATE_RUNNING  : natural := 2;
    constant STATE_STOPPING : natural := 3;
    constant STATE_FAULTED  : natural := 4;
    constant FAULT_BIT      : natural := 128;

    function chosen_modulation return modulation_t is
    begin
        if SIX_STEP then
            return SixStep;
        end if;
        return Sine;
    end function;

    signal Clk           : std_logic := '0';
    signal Reset_n       : std_logic := '0';
    signal BusWrite      : std_logic := '0';
    signal BusAddress    : std_logic_vector(2 downto 0) := (others => '0');
    signal BusWriteData  : std_logic_vector(15 downto 0) := (others => '0');
    signal BusReadData   : std_logic_vector(15 downto 0);
    signal EncoderA      : std_logic := '0';
    signal EncoderB      : std_logic := '0';
    signal OverCurrent_n : std_logic := '1';
    signal GateHigh      : std_logic_vector(2 downto 0);
    signal GateLow       : std_logic_vector(2 downto 0);

    -- The motor: steps of its shaft, and whether a burst of noise on the encoder is wanted.
    signal Shaft : integer := 0;
    signal Noise : boolean := false;

    type counts_t is array (0 to 2) of natural;

    -- Clocks of the last PWM period in which a gate was on.
    signal HighClocks : counts_t := (others => 0);
    signal LowClocks  : counts_t := (others => 0);
    signal Periods    : natural := 0;

    signal GateErrors : counts_t := (others => 0);

begin

    Clk <= not Clk after CLOCK_PERIOD / 2;

    dut : entity work.motor_top
        generic map (
            CLOCK_HZ       => CLOCK_HZ,
            SAMPLE_HZ      => CLOCK_HZ / TICK_CLOCKS,
            STEPS_PER_TURN => STEPS_PER_TURN,
            MODULATION     => chosen_modulation,
            DUTY_BITS      => DUTY_BITS,
            DEAD_NS        => DEAD_CLOCKS * 20
        )
        port map (
            Clk           => Clk,
            Reset_n       => Reset_n,
            BusWrite      => BusWrite,
            BusAddress    => BusAddress,
            BusWriteData  => BusWriteData,
            BusReadData   => BusReadData,
            EncoderA      => EncoderA,
            EncoderB      => EncoderB,
            OverCurrent_n => OverCurrent_n,
            GateHigh      => GateHigh,
            GateLow       => GateLow
        );

    -- The gates of a bridge are never on together, and never one right after the other.
    Guard : for P in 0 to 2 generate
        process (Clk)
            variable OffClocks : natural := DEAD_CLOCKS;
            variable WasHigh   : std_logic := '0';
        begin
            if falling_edge(Clk) and Reset_n = '1' then
                if GateHigh(P) = '1' and GateLow(P) = '1' then
                    GateErrors(P) <= GateErrors(P) + 1;
                elsif GateHigh(P) = '0' and GateLow(P) = '0' then
                    OffClocks := OffClocks + 1;
                else
                    if GateHigh(P) /= WasHigh and OffClocks < DEAD_CLOCKS then
                        GateErrors(P) <= GateErrors(P) + 1;
                    end if;
                    WasHigh   := GateHigh(P);
                    OffClocks := 0;
                end if;
            end if;
        end process;
    end generate;

    Measure : process (Clk)
        variable Clocks : natural := 0;
        variable Highs  : counts_t := (others => 0);
        variable Lows   : counts_t := (others => 0);
    begin
        if falling_edge(Clk) then
            for P in 0 to 2 loop
                Highs(P) := Highs(P) + 1 when GateHigh(P) = '1' else Highs(P);
                Lows(P)  := Lows(P) + 1 when GateLow(P) = '1' else Lows(P);
            end loop;
            Clocks := Clocks + 1;
            if Clocks = PWM_CLOCKS then
                HighClocks <= Highs;
                LowClocks  <= Lows;
                Periods    <= Periods + 1;
                Clocks     := 0;
                Highs      := (others => 0);
                Lows       := (others => 0);
            end if;
        end if;
    end process;

    -- A rotor with one pair of poles that follows the field with some lag.
    Rotor : process (Periods)
        variable Voltage : real_vector(0 to 2);
        variable Across  : real;
        variable Along   : real;
        variable Angle   : real := 0.0;
        variable Lag     : real;
    begin
        for P in 0 to 2 loop
            Voltage(P) := real(HighClocks(P)) / real(PWM_CLOCKS);
        end loop;
        Across := (2.0 * Voltage(0) - Voltage(1) - Voltage(2)) / 3.0;
        Along  := (Voltage(2) - Voltage(1)) / sqrt(3.0);
        if Across ** 2 + Along ** 2 > 0.0005 then
            Lag   := arctan(Across, Along) - Angle;
            Lag   := Lag - MATH_2_PI * round(Lag / MATH_2_PI);
            Angle := Angle + 0.2 * Lag;
        end if;
        Shaft <= integer(floor(Angle / MATH_2_PI * real(STEPS_PER_TURN)));
    end process;

    Encoder : process
        variable Shown   : integer := 0;
        variable Quarter : natural range 0 to 3 := 0;
    begin
        wait for 6 * CLOCK_PERIOD;
        if Noise then
            EncoderA <= not EncoderA;
            EncoderB <= not EncoderB;
            wait for 6 * CLOCK_PERIOD;
            EncoderA <= not EncoderA;
            EncoderB <= not EncoderB;
            wait until not Noise;
        elsif Shown /= Shaft then
            Shown    := Shown + 1 when Shown < Shaft else Shown - 1;
            Quarter  := Shown mod 4;
            EncoderA <= '1' when Quarter = 2 or Quarter = 3 else '0';
            EncoderB <= '1' when Quarter = 1 or Quarter = 2 else '0';
        end if;
    end process;

    Test : process

        variable Checks : natural := 0;
        variable Errors : natural := 0;

        procedure check(Good : boolean; What : string) is
        begin
            Checks := Checks + 1;
            if not Good then
                Errors := Errors + 1;
                write(output, to_string(now, us) & " wrong: " & What & LF);
            end if;
        end procedure;

        procedure write_register(Address : natural; Value : natural) is
        begin
            wait until falling_edge(Clk);
            BusAddress   <= std_logic_vector(to_unsigned(Address, 3));
            BusWriteData <= std_logic_vector(to_unsigned(Value, 16));
            BusWrite     <= '1';
            wait until falling_edge(Clk);
            BusWrite     <= '0';
        end procedure;

        procedure read_register(Address : natural; Value : out natural) is
        begin
            wait until falling_edge(Clk);
            BusAddress <= std_logic_vector(to_unsigned(Address, 3));
            wait until falling_edge(Clk);
            Value := to_integer(unsigned(BusReadData));
        end procedure;

        procedure expect_register(Address : natural; Value : natural; What : string) is
            variable Found : natural;
        begin
            read_register(Address, Found);
            check(Found = Value,
                  What & ": " & to_string(Found) & ", not " & to_string(Value));
        end procedure;

        procedure wait_ticks(Count : positive) is
        begin
            wait for Count * TICK_CLOCKS * CLOCK_PERIOD;
        end procedure;

        -- The measured speed, and the speed of the motor itself over 16 ticks.
        procedure expect_speed(Speed : integer; What : string) is
            variable Word  : natural;
            variable Found : integer;
            variable Start : integer;
        begin
            Start := Shaft;
            for Tick in 1 to 16 loop
                wait_ticks(1);
                read_register(REG_MEASURED, Word);
                Found := to_integer(to_signed(Word - 65536, 17)) when Word >= 32768 else Word;
                check(abs (Found - Speed) <= 1,
                      What & ": measured " & to_string(Found) & ", not " & to_string(Speed));
            end loop;
            check(abs (real(Shaft - Start) / 16.0 - real(Speed)) < 0.5,
                  What & ": the motor moved " & to_string(Shaft - Start) & " steps in 16 ticks");
        end procedure;

        procedure expect_position(What : string) is
            variable Found : natural;
        begin
            read_register(REG_POSITION, Found);
            check(Found = Shaft mod STEPS_PER_TURN,
                  What & ": " & to_string(Found) & ", not " & to_string(Shaft mod STEPS_PER_TURN));
        end procedure;

        procedure expect_gates_off(What : string) is
        begin
            wait for 2 * PWM_CLOCKS * CLOCK_PERIOD;
            for P in 0 to 2 loop
                check(HighClocks(P) = 0 and LowClocks(P) = 0, What);
            end loop;
        end procedure;

        procedure test_registers is
        begin
            expect_register(REG_IDENTITY, 16#4D44#, "identity");
            write_register(REG_IDENTITY, 16#1234#);
            expect_register(REG_IDENTITY, 16#4D44#, "identity after a write");
            write_register(REG_SPEED, 16#1234#);
            write_register(REG_GAINS, 16#5678#);
            expect_register(REG_SPEED, 16#1234#, "speed register");
            expect_register(REG_GAINS, 16#5678#, "gains register");
            expect_register(REG_CONTROL, 0, "control register");
            expect_register(REG_STATE, STATE_IDLE, "state after reset");
            expect_register(REG_ERRORS, 0, "encoder errors after reset");
        end procedure;

        procedure test_start is
        begin
            write_register(REG_SPEED, 6);
            write_register(REG_GAINS, 16#60F0#);
            expect_gates_off("idle drive");
            write_register(REG_CONTROL, FORWARDS);
            wait_ticks(4);
            expect_register(REG_STATE, STATE_STARTING, "state while charging");
            for P in 0 to 2 loop
                check(HighClocks(P) = 0 and LowClocks(P) = PWM_CLOCKS, "lower gates charge");
            end loop;
            wait_ticks(10);
            expect_register(REG_STATE, STATE_RUNNING, "state after charging");
        end procedure;

        -- The duty of each phase is the middle on average, over whole turns of the field.
        procedure test_waveform is
            constant TURNS  : positive := 3;
            variable Start  : integer;
            variable Count  : natural := 0;
            variable Sum    : natural := 0;
            variable Lowest : natural := PWM_CLOCKS;
            variable Levels : std_logic_vector(0 to PWM_CLOCKS) := (others => '0');
            variable Used   : natural := 0;
        begin
            Start := Shaft;
            while Shaft < Start + TURNS * STEPS_PER_TURN and Count < 1000 loop
                wait for PWM_CLOCKS * CLOCK_PERIOD;
                Count  := Count + 1;
                Sum    := Sum + HighClocks(0);
                Lowest := minimum(Lowest, HighClocks(0));
                Levels(HighClocks(0)) := '1';
            end loop;
            for Level in Levels'range loop
                Used := Used + 1 when Levels(Level) = '1' else Used;
            end loop;
            check(abs (real(Sum) / real(Count) - real(PWM_CLOCKS / 2 - DEAD_CLOCKS)) < 3.0,
                  "mean of a phase: " & to_string(real(Sum) / real(Count)));
            if SIX_STEP then
                check(Used <= 7, "six steps: " & to_string(Used) & " levels");
            else
                check(Used >= 12, "sine: " & to_string(Used) & " levels");
            end if;
        end procedure;

        procedure test_speeds is
        begin
            wait_ticks(40);
            expect_speed(6, "forwards");
            expect_position("position forwards");
            test_waveform;
            write_register(REG_CONTROL, BACKWARDS);
            wait_ticks(60);
            expect_speed(-6, "backwards");
            expect_position("position backwards");
            write_register(REG_SPEED, 10);
            wait_ticks(40);
            expect_speed(-10, "faster backwards");
        end procedure;

        procedure test_ramp is
        begin
            write_register(REG_CONTROL, STOP_BACKWARDS);
            wait_ticks(5);
            expect_register(REG_STATE, STATE_STOPPING, "state on the ramp down");
            wait_ticks(12);
            expect_register(REG_STATE, STATE_IDLE, "state after the ramp");
            expect_gates_off("stopped drive");
        end procedure;

        procedure test_fault is
        begin
            write_register(REG_SPEED, 5);
            write_register(REG_CONTROL, FORWARDS);
            wait_ticks(40);
            expect_register(REG_STATE, STATE_RUNNING, "state before the fault");
            wait until falling_edge(Clk);
            OverCurrent_n <= '0';
            wait for 8 * CLOCK_PERIOD;
            check(GateHigh = "000" and GateLow = "000", "a fault turns the gates off at once");
            expect_register(REG_STATE, FAULT_BIT + STATE_FAULTED, "state with a fault");
            write_register(REG_CONTROL, CLEAR_FAULT);
            expect_register(REG_STATE, FAULT_BIT + STATE_FAULTED, "a present fault is not cleared");
            OverCurrent_n <= '1';
            wait_ticks(2);
            expect_register(REG_STATE, FAULT_BIT + STATE_FAULTED, "a past fault is kept");
            expect_gates_off("gates with a fault");
            write_register(REG_CONTROL, CLEAR_FAULT);
            wait for 8 * CLOCK_PERIOD;
            expect_register(REG_STATE, STATE_IDLE, "state after clearing the fault");
            expect_register(REG_CONTROL, 0, "the order to clear is not kept");
        end procedure;

        procedure test_encoder_errors is
        begin
            wait_ticks(2);
            Noise <= true;
            wait_ticks(1);
            Noise <= false;
            expect_register(REG_ERRORS, 2, "encoder errors");
        end procedure;

        procedure test_forced_duty is
        begin
            write_register(REG_CONTROL, FORWARDS);
            wait_ticks(6);
            for P in 0 to 2 loop
                check(HighClocks(P) = 2 * DEBUG_DUTY - 1 - DEAD_CLOCKS,
                      "forced duty: " & to_string(HighClocks(P)) & " clocks");
            end loop;
        end procedure;

        procedure test_forced_fault is
        begin
            expect_register(REG_STATE, FAULT_BIT + STATE_FAULTED, "state with a forced fault");
            write_register(REG_CONTROL, CLEAR_FAULT + FORWARDS);
            wait_ticks(6);
            expect_register(REG_STATE, FAULT_BIT + STATE_FAULTED, "a forced fault is not cleared");
            expect_gates_off("gates with a forced fault");
        end procedure;

    begin
        wait for 10 * CLOCK_PERIOD;
        Reset_n <= '1';
        wait for 10 * CLOCK_PERIOD;
        if DEBUG_FAULT then
            test_forced_fault;
        elsif DEBUG_DUTY >= 0 then
            test_forced_duty;
        else
            test_registers;
            test_start;
            test_speeds;
            test_ramp;
            test_fault;
            test_encoder_errors;
        end if;
        for P in 0 to 2 loop
            check(GateErrors(P) = 0, "gates of a bridge: " & to_string(GateErrors(P)) & " errors");
        end loop;
        if Errors = 0 then
            write(output, "PASS: " & to_string(Checks) & " checks" & LF);
        else
            write(output, "FAIL: " & to_string(Errors) & " of " & to_string(Checks) & " checks" & LF);
        end if;
        finish;
    end process;

end architecture;
