-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

library ieee;
use ieee.std_logic_1164.all;

entity wrapped is
    port (tdi : in std_logic; tdo : out std_logic);
end entity;

architecture rtl of wrapped is
begin
    u : entity work.KX_JTAG port map (TDI => tdi, TDO => tdo);
end architecture;
