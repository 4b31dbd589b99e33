-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

-- Not below the top.
library ieee;
use ieee.std_logic_1164.all;

entity extra is
end entity;

architecture rtl of extra is
    signal s : std_logic;
begin
end architecture;
