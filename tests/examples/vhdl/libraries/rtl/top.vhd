-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

-- Two libraries have an entity of the same name.
library ieee, GATES;
use ieee.std_logic_1164.all;
use gates.sizes.all;

entity top is
    port (clk : in std_logic);
end entity;

architecture rtl of top is
    signal s : std_logic_vector(WIDTH downto 1);
begin
    mine     : entity work.cell port map (s);
    theirs   : entity gates.cell port map (s);
    a_helper : entity Gates.Helper port map (s);
end architecture;
