-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

library ieee;
use ieee.std_logic_1164.all;

entity leaf is
    port (d : in std_logic_vector(3 downto 0));
end entity;

architecture rtl of leaf is
begin
end architecture;
