-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

-- The JTAG primitive through a component below the top; other primitives of the device are no nodes.
library ieee;
use ieee.std_logic_1164.all;

entity tap is
    port (tdi : in std_logic);
end entity;

architecture rtl of tap is
    component kx_jtag is
        port (TDI : in std_logic; TDO : out std_logic);
    end component;
    signal tdo : std_logic;
begin
    u_jtag : kx_jtag port map (TDI => tdi, TDO => tdo);
end architecture;

library ieee;
use ieee.std_logic_1164.all;

entity top is
    port (pad : in std_logic);
end entity;

architecture rtl of top is
    component KX_PLL is
        generic (CLKFBOUT_MULT : integer := 1);
        port (CLKIN, RST : in std_logic; CLKOUT0, LOCKED : out std_logic);
    end component;
    signal clk, reset, locked : std_logic;
begin
    u_pll : KX_PLL
        generic map (CLKFBOUT_MULT => 8)
        port map (CLKIN => pad, RST => reset, CLKOUT0 => clk, LOCKED => locked);
    u_tap : entity work.tap port map (tdi => clk);
end architecture;
