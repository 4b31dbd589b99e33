-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

-- An inout of a unit in the other language counts as driven on both sides, because either may drive it.
library ieee;
use ieee.std_logic_1164.all;

entity top is
    port (clk : in std_logic; pad : inout std_logic);
end entity;

architecture rtl of top is
    component pads is
        port (idle, driven, drives, both, pad : inout std_logic);
    end component;
    signal idle, driven, drives, both : std_logic;
begin
    driven <= clk;
    both   <= clk;
    u : pads port map (idle => idle, driven => driven, drives => drives, both => both, pad => pad);
end architecture;
