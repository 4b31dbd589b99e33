-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

use work.dsp_pkg.all;

-- First-order low-pass filter with a gain of 1 and a time constant of 2**SHIFT samples.
entity lowpass is
    generic (
        SHIFT : natural := 3
    );
    port (
        Clk      : in  std_logic;
        Reset_n  : in  std_logic;
        Valid    : in  std_logic;
        Sample   : in  sample_t;
        Filtered : out sample_t
    );
end entity;

architecture rtl of lowpass is

    -- The output with SHIFT more bits after the point.
    signal Sum : signed(sample_t'length + SHIFT - 1 downto 0);

begin

    Filtered <= Sum(Sum'high downto SHIFT);

    Accumulate : process (Clk, Reset_n)
    begin
        if Reset_n = '0' then
            Sum <= (others => '0');
        elsif rising_edge(Clk) then
            if Valid = '1' then
                Sum <= Sum + Sample - Filtered;
            end if;
        end if;
    end process;

end architecture;
