-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

-- The JTAG primitive in a branch that is not taken, in comments, in a text and as a component only.
library ieee;
use ieee.std_logic_1164.all;

entity top is
    generic (DEBUG : boolean := false; NAME : string := "u : KX_JTAG port map (a);");
    port (a : in std_logic);
end entity;

architecture rtl of top is
    component KX_JTAG is
        port (TDI : in std_logic; TDO : out std_logic);
    end component;
    signal tdo : std_logic;
begin
    -- u_comment : KX_JTAG port map (TDI => a);
    never : if DEBUG generate
        u_jtag : KX_JTAG port map (TDI => a, TDO => tdo);
    end generate;
end architecture;
