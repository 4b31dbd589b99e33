-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

use work.dsp_pkg.all;

-- Proportional-integral controller. Output and integral part are limited to the range of a sample.
entity pi_controller is
    port (
        Clk      : in  std_logic;
        Reset_n  : in  std_logic;
        Clear    : in  std_logic;
        Valid    : in  std_logic;
        Gains    : in  gains_t;
        Setpoint : in  sample_t;
        Measured : in  sample_t;
        Output   : out sample_t
    );
end entity;

architecture rtl of pi_controller is

    constant FRACTION_BITS : positive := 4;
    constant LIMIT         : positive := SAMPLE_MAX * 2 ** FRACTION_BITS;

    subtype product_t is signed(sample_t'length + 1 + Gains.Proportional'length downto 0);

    signal Deviation : signed(sample_t'length downto 0);
    signal Direct    : product_t;
    signal Increment : product_t;
    signal Integral  : integer range -LIMIT to LIMIT;

    function limited(Value : integer) return integer is
    begin
        return minimum(LIMIT, maximum(-LIMIT, Value));
    end function;

begin

    Deviation <= resize(Setpoint, Deviation'length) - Measured;
    Direct    <= Deviation * signed('0' & Gains.Proportional);
    Increment <= Deviation * signed('0' & Gains.Integral);

    Control : process (Clk, Reset_n)
    begin
        if Reset_n = '0' then
            Integral <= 0;
            Output   <= (others => '0');
        elsif rising_edge(Clk) then
            if Clear = '1' then
                Integral <= 0;
                Output   <= (others => '0');
            elsif Valid = '1' then
                Integral <= limited(Integral + to_integer(Increment));
                Output   <= saturate(shift_right(resize(Direct, 24) + Integral, FRACTION_BITS));
            end if;
        end if;
    end process;

end architecture;
