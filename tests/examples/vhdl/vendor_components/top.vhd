-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

-- Components of a vendor whose library is not there: their outputs drive, their inputs do not.
library ieee;
use ieee.std_logic_1164.all;
library orion;
use orion.primitives.all;

entity top is
    port (pad : in std_logic; led : out std_logic);
end entity;

architecture rtl of top is
    component ORION_DELAY is
        generic (STEPS : natural := 4; MODE : string := "FIXED");
        port (
            D  : in    std_logic;
            Q  : out   std_logic;
            B  : inout std_logic;
            A  : out   std_logic_vector(3 downto 0)
        );
    end component;
    signal late, both, enable : std_logic;
    signal taps    : std_logic_vector(7 downto 0);
    signal clk, locked, reset : std_logic;
begin
    u_delay : ORION_DELAY
        generic map (STEPS => 7)
        port map (D => enable, Q => late, B => both, A => taps(5 downto 2));
    u_pll : ORION_PLL
        generic map (MULTIPLY => 4, MODE => "FAST")
        port map (CLKIN => pad, RESET => reset, CLKOUT => clk, LOCKED => locked);
    led <= late;
end architecture;
