-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

library ieee;
use ieee.std_logic_1164.all;

-- Drives the two gates of a half bridge. Between turning one gate off and the other one on, at least
-- CLOCKS clocks pass, and at least one. Without Enable both gates are off.
entity dead_time is
    generic (
        CLOCKS : natural := 1
    );
    port (
        Clk      : in  std_logic;
        Reset_n  : in  std_logic;
        Enable   : in  std_logic;
        Demand   : in  std_logic;
        GateHigh : out std_logic;
        GateLow  : out std_logic
    );
end entity;

architecture rtl of dead_time is

    signal Previous  : std_logic;
    signal Remaining : natural range 0 to CLOCKS;
    signal Ready     : std_logic;

begin

    Ready <= '1' when Enable = '1' and Demand = Previous and Remaining <= 1 else '0';

    Wait_Time : process (Clk, Reset_n)
    begin
        if Reset_n = '0' then
            Previous  <= '0';
            Remaining <= CLOCKS;
            GateHigh  <= '0';
            GateLow   <= '0';
        elsif rising_edge(Clk) then
            Previous <= Demand;
            if Enable = '0' or Demand /= Previous then
                Remaining <= CLOCKS;
            elsif Remaining /= 0 then
                Remaining <= Remaining - 1;
            end if;
            GateHigh <= Ready and Demand;
            GateLow  <= Ready and not Demand;
        end if;
    end process;

end architecture;
