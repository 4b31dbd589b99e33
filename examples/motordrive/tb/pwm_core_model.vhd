-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

library ieee;
use ieee.std_logic_1164.all;

-- What a debug core drives in the model of pwm_core.
package pwm_probes is

    signal gates_off : std_logic := '0';

end package;

library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

-- Model of the SystemVerilog module pwm_core for simulators that read VHDL only. It calculates the
-- demands from the clock within the period.
entity pwm_core is
    generic (
        CHANNELS    : positive;
        DUTY_BITS   : positive;
        DEAD_CLOCKS : natural
    );
    port (
        clk          : in  std_logic;
        rst_n        : in  std_logic;
        enable       : in  std_logic;
        duty         : in  std_logic_vector(CHANNELS * DUTY_BITS - 1 downto 0);
        period_start : out std_logic;
        gate_high    : out std_logic_vector(CHANNELS - 1 downto 0);
        gate_low     : out std_logic_vector(CHANNELS - 1 downto 0)
    );
end entity;

architecture model of pwm_core is

    constant PERIOD : positive := 2 * (2 ** DUTY_BITS - 1);

    signal gates_on     : std_logic;
    signal clock_number : natural range 0 to PERIOD - 1;
    signal active_duty  : std_logic_vector(duty'range) := (others => '0');

begin

    gates_on <= enable and not work.pwm_probes.gates_off;

    process (clk, rst_n)
    begin
        if rst_n = '0' then
            clock_number <= 0;
            active_duty  <= (others => '0');
            period_start <= '0';
        elsif rising_edge(clk) then
            clock_number <= (clock_number + 1) mod PERIOD;
            period_start <= '0';
            if clock_number = PERIOD - 1 then
                active_duty  <= duty;
                period_start <= '1';
            end if;
        end if;
    end process;

    channel : for n in 0 to CHANNELS - 1 generate
        signal width  : natural range 0 to 2 ** DUTY_BITS - 1;
        signal demand : std_logic;
    begin

        width  <= to_integer(unsigned(active_duty((n + 1) * DUTY_BITS - 1 downto n * DUTY_BITS)));
        demand <= '1' when clock_number < width or PERIOD - clock_number < width else '0';

        u_dead_time : entity work.dead_time
            generic map (
                CLOCKS => DEAD_CLOCKS
            )
            port map (
                Clk      => clk,
                Reset_n  => rst_n,
                Enable   => gates_on,
                Demand   => demand,
                GateHigh => gate_high(n),
                GateLow  => gate_low(n)
            );

    end generate;

end architecture;
