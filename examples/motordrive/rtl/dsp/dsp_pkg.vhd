-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

-- Number format and parameters of the blocks in the library dsp.
package dsp_pkg is

    subtype sample_t is signed(11 downto 0);

    constant SAMPLE_MAX : integer := 2 ** (sample_t'length - 1) - 1;

    -- Gains of a controller, in 1/16.
    type gains_t is record
        Proportional : unsigned(7 downto 0);
        Integral     : unsigned(7 downto 0);
    end record;

    -- The nearest sample between -SAMPLE_MAX and SAMPLE_MAX.
    function saturate(Value : signed) return sample_t;

end package;

package body dsp_pkg is

    function saturate(Value : signed) return sample_t is
    begin
        if Value > SAMPLE_MAX then
            return to_signed(SAMPLE_MAX, sample_t'length);
        elsif Value < -SAMPLE_MAX then
            return to_signed(-SAMPLE_MAX, sample_t'length);
        end if;
        return resize(Value, sample_t'length);
    end function;

end package body;
