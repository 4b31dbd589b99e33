-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

library dsp;
use dsp.dsp_pkg.all;

-- Types of the motor drive, and the components that are written in another language.
package motor_pkg is

    constant PHASES : positive := 3;

    type modulation_t is (Sine, SixStep);

    type drive_state_t is (Idle, Starting, Running, Stopping, Faulted);

    type duty_array_t is array (natural range <>) of unsigned;

    subtype word_t is std_logic_vector(15 downto 0);

    type word_array_t is array (natural range <>) of word_t;

    -- What the registers ask for.
    type command_t is record
        Enable     : std_logic;
        Backward   : std_logic;
        ClearFault : std_logic;
        Speed      : unsigned(10 downto 0);
        Gains      : gains_t;
    end record;

    -- What the registers show.
    type status_t is record
        State    : drive_state_t;
        Fault    : std_logic;
        Speed    : sample_t;
        Position : word_t;
        Errors   : word_t;
    end record;

    component pwm_core is
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
    end component;

end package;
