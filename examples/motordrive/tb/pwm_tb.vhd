-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

library std;
use std.env.finish;
use std.textio.all;

-- Applies the vectors of pwm_tb.sv to the VHDL model of the pulse-width modulator and prints the
-- same lines, so that the model can be compared with the module.
entity pwm_tb is
    generic (
        VECTORS     : string  := "tb/pwm_vectors.txt";
        DEAD_CLOCKS : natural := 3
    );
end entity;

architecture test of pwm_tb is

    constant CHANNELS  : positive := 2;
    constant DUTY_BITS : positive := 4;

    signal clk          : std_logic := '0';
    signal rst_n        : std_logic := '0';
    signal enable       : std_logic := '0';
    signal duty         : std_logic_vector(CHANNELS * DUTY_BITS - 1 downto 0) := (others => '0');
    signal period_start : std_logic;
    signal gate_high    : std_logic_vector(CHANNELS - 1 downto 0);
    signal gate_low     : std_logic_vector(CHANNELS - 1 downto 0);

begin

    clk <= not clk after 5 ns;

    dut : entity work.pwm_core
        generic map (
            CHANNELS    => CHANNELS,
            DUTY_BITS   => DUTY_BITS,
            DEAD_CLOCKS => DEAD_CLOCKS
        )
        port map (
            clk          => clk,
            rst_n        => rst_n,
            enable       => enable,
            duty         => duty,
            period_start => period_start,
            gate_high    => gate_high,
            gate_low     => gate_low
        );

    process
        file     source : text open read_mode is VECTORS;
        variable row    : line;
        type numbers_t is array (natural range <>) of natural;
        variable vector : numbers_t(0 to 4);
    begin
        wait until falling_edge(clk);
        wait until falling_edge(clk);
        rst_n <= '1';
        while not endfile(source) loop
            readline(source, row);
            for i in vector'range loop
                read(row, vector(i));
            end loop;
            enable    <= '1' when vector(1) /= 0 else '0';
            work.pwm_probes.gates_off <= '1' when vector(2) /= 0 else '0';
            duty      <= std_logic_vector(to_unsigned(vector(3), DUTY_BITS))
                & std_logic_vector(to_unsigned(vector(4), DUTY_BITS));
            for i in 1 to vector(0) loop
                wait until falling_edge(clk);
                write(output, "clock " & to_string(period_start) & ' ' & to_string(gate_high)
                    & ' ' & to_string(gate_low) & LF);
            end loop;
        end loop;
        finish;
    end process;

end architecture;
