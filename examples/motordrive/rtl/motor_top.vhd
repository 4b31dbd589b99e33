-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

library dsp;
use dsp.dsp_pkg.all;

use work.motor_pkg.all;

-- Speed-controlled drive for a three-phase motor with an encoder.
entity motor_top is
    generic (
        CLOCK_HZ       : positive     := 50_000_000;
        SAMPLE_HZ      : positive     := 1_000;
        STEPS_PER_TURN : positive     := 1_024;
        MODULATION     : modulation_t := Sine;
        DUTY_BITS      : positive     := 10;
        DEAD_NS        : natural      := 500;
        FILTER_SHIFT   : natural      := 2
    );
    port (
        Clk           : in  std_logic;
        Reset_n       : in  std_logic;
        -- Registers
        BusWrite      : in  std_logic;
        BusAddress    : in  std_logic_vector(2 downto 0);
        BusWriteData  : in  std_logic_vector(15 downto 0);
        BusReadData   : out std_logic_vector(15 downto 0);
        -- Motor
        EncoderA      : in  std_logic;
        EncoderB      : in  std_logic;
        OverCurrent_n : in  std_logic;
        GateHigh      : out std_logic_vector(PHASES - 1 downto 0);
        GateLow       : out std_logic_vector(PHASES - 1 downto 0)
    );
end entity;

architecture rtl of motor_top is

    constant TICK_CLOCKS : positive := CLOCK_HZ / SAMPLE_HZ;
    constant DEAD_CLOCKS : natural  := CLOCK_HZ / 1_000_000 * DEAD_NS / 1_000;

    -- Without a driver on purpose: a virtual I/O core drives these signals in the laboratory.
    -- Without one the synthesis ties them to their initial values and removes the logic behind them.
    signal DbgForceDuty : std_logic := '0';
    signal DbgDuty      : duty_array_t(0 to PHASES - 1)(DUTY_BITS - 1 downto 0) :=
        (others => (others => '0'));
    signal DbgFault     : std_logic := '0';

    signal TickCount       : natural range 0 to TICK_CLOCKS - 1;
    signal Tick            : std_logic;
    signal Command         : command_t;
    signal Status          : status_t;
    signal Position        : natural range 0 to STEPS_PER_TURN - 1;
    signal Errors          : natural range 0 to 255;
    signal Speed           : sample_t;
    signal Setpoint        : sample_t;
    signal Frequency       : sample_t;
    signal GateEnable      : std_logic;
    signal ModulatorEnable : std_logic;
    signal Stopped         : std_logic;
    signal PeriodStart     : std_logic;
    signal ModulatorDuty   : duty_array_t(0 to PHASES - 1)(DUTY_BITS - 1 downto 0);
    signal DutyBits        : std_logic_vector(PHASES * DUTY_BITS - 1 downto 0);

begin

    Tick <= '1' when TickCount = 0 else '0';

    Divide : process (Clk, Reset_n)
    begin
        if Reset_n = '0' then
            TickCount <= TICK_CLOCKS - 1;
        elsif rising_edge(Clk) then
            TickCount <= TICK_CLOCKS - 1 when TickCount = 0 else TickCount - 1;
        end if;
    end process;

    -- Registers

    u_Registers : entity work.register_file
        port map (
            Clk       => Clk,
            Reset_n   => Reset_n,
            WriteBus  => BusWrite,
            Address   => unsigned(BusAddress),
            WriteData => BusWriteData,
            ReadData  => BusReadData,
            Command   => Command,
            Status    => Status
        );

    Status.Position <= word_t(to_unsigned(Position, word_t'length));
    Status.Errors   <= word_t(to_unsigned(Errors, word_t'length));

    -- A fault is kept until the registers clear it.
    Protection : block
        signal Sync : std_logic_vector(0 to 1);
    begin

        Latch : process (Clk, Reset_n)
        begin
            if Reset_n = '0' then
                Sync         <= (others => '1');
                Status.Fault <= '0';
            elsif rising_edge(Clk) then
                Sync <= OverCurrent_n & Sync(0);
                if Sync(1) = '0' or DbgFault = '1' then
                    Status.Fault <= '1';
                elsif Command.ClearFault = '1' then
                    Status.Fault <= '0';
                end if;
            end if;
        end process;

    end block;

    -- Speed loop

    u_Encoder : entity work.quadrature_decoder
        generic map (
            STEPS_PER_TURN => STEPS_PER_TURN
        )
        port map (
            Clk      => Clk,
            Reset_n  => Reset_n,
            Tick     => Tick,
            A        => EncoderA,
            B        => EncoderB,
            Position => Position,
            Speed    => Speed,
            Errors   => Errors
        );

    u_Filter : entity dsp.lowpass
        generic map (
            SHIFT => FILTER_SHIFT
        )
        port map (
            Clk      => Clk,
            Reset_n  => Reset_n,
            Valid    => Tick,
            Sample   => Speed,
            Filtered => Status.Speed
        );

    u_Control : entity work.drive_control
        port map (
            Clk             => Clk,
            Reset_n         => Reset_n,
            Tick            => Tick,
            Command         => Command,
            Fault           => Status.Fault,
            State           => Status.State,
            Setpoint        => Setpoint,
            GateEnable      => GateEnable,
            ModulatorEnable => ModulatorEnable
        );

    Stopped <= not ModulatorEnable;

    u_Controller : entity dsp.pi_controller
        port map (
            Clk      => Clk,
            Reset_n  => Reset_n,
            Clear    => Stopped,
            Valid    => Tick,
            Gains    => Command.Gains,
            Setpoint => Setpoint,
            Measured => Status.Speed,
            Output   => Frequency
        );

    -- Power stage

    u_Modulator : entity work.modulator
        generic map (
            MODULATION => MODULATION,
            DUTY_BITS  => DUTY_BITS
        )
        port map (
            Clk         => Clk,
            Reset_n     => Reset_n,
            Enable      => ModulatorEnable,
            PeriodStart => PeriodStart,
            Frequency   => Frequency,
            Duty        => ModulatorDuty
        );

    Join : for P in 0 to PHASES - 1 generate
        signal Chosen : unsigned(DUTY_BITS - 1 downto 0);
    begin

        Chosen <= DbgDuty(P) when DbgForceDuty = '1' else ModulatorDuty(P);

        DutyBits((P + 1) * DUTY_BITS - 1 downto P * DUTY_BITS) <= std_logic_vector(Chosen);

    end generate;

    u_Pwm : pwm_core
        generic map (
            CHANNELS    => PHASES,
            DUTY_BITS   => DUTY_BITS,
            DEAD_CLOCKS => DEAD_CLOCKS
        )
        port map (
            clk          => Clk,
            rst_n        => Reset_n,
            enable       => GateEnable,
            duty         => DutyBits,
            period_start => PeriodStart,
            gate_high    => GateHigh,
            gate_low     => GateLow
        );

end architecture;
