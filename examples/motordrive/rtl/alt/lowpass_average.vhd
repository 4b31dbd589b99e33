-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

use work.dsp_pkg.all;

-- Another lowpass: the rounded mean of the last 2**SHIFT samples. It settles in a fixed time and
-- costs more registers.
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

architecture average of lowpass is

    constant HALF : natural := 2 ** SHIFT / 2;

    type samples_t is array (natural range <>) of sample_t;

    signal Samples : samples_t(1 to 2 ** SHIFT);
    signal Sum     : signed(sample_t'length + SHIFT - 1 downto 0);

begin

    Filtered <= resize(shift_right(Sum + HALF, SHIFT), sample_t'length);

    Accumulate : process (Clk, Reset_n)
    begin
        if Reset_n = '0' then
            Samples <= (others => (others => '0'));
            Sum     <= (others => '0');
        elsif rising_edge(Clk) then
            if Valid = '1' then
                Samples <= Sample & Samples(1 to Samples'high - 1);
                Sum     <= Sum + Sample - Samples(Samples'high);
            end if;
        end if;
    end process;

end architecture;
