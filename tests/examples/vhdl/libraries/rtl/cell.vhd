-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

library ieee;
use ieee.std_logic_1164.all;

entity cell is
    port (i : in std_logic_vector(1 downto 0));
end entity;

architecture rtl of cell is
    signal in_work : std_logic;
    signal Spelling : std_logic;
begin
end architecture;
