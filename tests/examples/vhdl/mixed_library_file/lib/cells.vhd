-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

library ieee;
use ieee.std_logic_1164.all;

entity from_vhdl is
    port (i : in std_logic);
end entity;

architecture rtl of from_vhdl is
begin
end architecture;

library ieee;
use ieee.std_logic_1164.all;

entity deeper is
    port (i : in std_logic);
end entity;

architecture rtl of deeper is
begin
end architecture;
