-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;
use ieee.math_real.all;

library dsp;
use dsp.dsp_pkg.all;

use work.motor_pkg.all;

-- Turns a frequency into the duties of the phases. The voltage rises with the frequency.
entity modulator is
    generic (
        MODULATION : modulation_t := Sine;
        DUTY_BITS  : positive := 10;
        BOOST      : natural := 40
    );
    port (
        Clk         : in  std_logic;
        Reset_n     : in  std_logic;
        Enable      : in  std_logic;
        PeriodStart : in  std_logic;
        Frequency   : in  sample_t;
        Duty        : out duty_array_t(0 to PHASES - 1)(DUTY_BITS - 1 downto 0)
    );
end entity;

architecture rtl of modulator is

    constant ANGLE_BITS    : positive := 16;
    constant TABLE_BITS    : positive := 6;
    constant AMPLITUDE_MAX : positive := 256;
    constant MIDDLE        : positive := 2 ** (DUTY_BITS - 1);
    constant PEAK          : positive := MIDDLE - 1;

    subtype angle_t is unsigned(ANGLE_BITS - 1 downto 0);
    subtype wave_t is integer range -PEAK to PEAK;

    type wave_table_t is array (0 to 2 ** TABLE_BITS - 1) of wave_t;

    function sine_table return wave_table_t is
        variable Waves : wave_table_t;
    begin
        for I in Waves'range loop
            Waves(I) := integer(round(
                sin(MATH_2_PI * real(I) / real(Waves'length)) * real(PEAK)));
        end loop;
        return Waves;
    end function;

    -- Part of a turn as an angle.
    function fraction(Numerator, Denominator : natural) return angle_t is
    begin
        return to_unsigned(Numerator * 2 ** ANGLE_BITS / Denominator, ANGLE_BITS);
    end function;

    signal FieldAngle : angle_t;
    signal Amplitude  : natural range 0 to AMPLITUDE_MAX;

begin

    Amplitude <= minimum(BOOST + to_integer(abs Frequency), AMPLITUDE_MAX);

    Turn : process (Clk, Reset_n)
    begin
        if Reset_n = '0' then
            FieldAngle <= (others => '0');
        elsif rising_edge(Clk) then
            if PeriodStart = '1' then
                FieldAngle <= FieldAngle + unsigned(resize(Frequency, ANGLE_BITS));
            end if;
        end if;
    end process;

    Phase : for P in Duty'range generate
        signal Angle : angle_t;
        signal Wave  : wave_t;
    begin

        Angle <= FieldAngle - fraction(P, PHASES);

        Shape : case MODULATION generate

            when Sine =>
                constant TABLE : wave_table_t := sine_table;
                signal Entry : natural range TABLE'range;
            begin
                Entry <= to_integer(Angle(Angle'high downto Angle'high - TABLE_BITS + 1));
                Wave  <= TABLE(Entry);
            end;

            when SixStep =>
                signal Sector : natural range 0 to 5;
            begin
                -- Sector 0 lies around the angle 0.
                Sector <= to_integer(Angle + fraction(1, 12)) * 6 / 2 ** ANGLE_BITS;

                with Sector select Wave <=
                    PEAK when 1 | 2,
                    -PEAK when 4 | 5,
                    0 when others;
            end;

        end generate;

        -- A duty of 0 turns on the lower gate only.
        Scale : process (Clk, Reset_n)
        begin
            if Reset_n = '0' then
                Duty(P) <= (others => '0');
            elsif rising_edge(Clk) then
                if Enable = '0' then
                    Duty(P) <= (others => '0');
                elsif PeriodStart = '1' then
                    Duty(P) <= to_unsigned(MIDDLE + Wave * Amplitude / AMPLITUDE_MAX, DUTY_BITS);
                end if;
            end if;
        end process;

    end generate;

end architecture;
