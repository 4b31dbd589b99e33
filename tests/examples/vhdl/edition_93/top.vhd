-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

-- What only the edition of 1993 takes: its identifiers, shared variables of any type, and
-- packages outside of the standard.
library ieee;
use ieee.std_logic_1164.all;
use ieee.std_logic_arith.all;
use ieee.std_logic_unsigned.all;

entity top is
    port (clk : in std_logic; q : out std_logic_vector(1 downto 0));
end top;

architecture rtl of top is
    signal default, context, property : std_logic;
    signal count : std_logic_vector(1 downto 0);
    shared variable total : integer := 0;
begin
    process (clk)
    begin
        if clk'event and clk = '1' then
            count   <= count + 1;
            total   := total + conv_integer(count);
            context <= default;
        end if;
    end process;
    q <= count;
end rtl;
