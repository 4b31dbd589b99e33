-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

-- Entities that instantiate themselves until a generic ends it.
library ieee;
use ieee.std_logic_1164.all;

entity tree is
    generic (LEAVES : positive := 4);
    port (d : in std_logic_vector(LEAVES - 1 downto 0); q : out std_logic);
end entity;

architecture rtl of tree is
    signal low, high : std_logic;
begin
    one : if LEAVES = 1 generate
        q <= d(0);
    end generate;
    more : if LEAVES > 1 generate
        lower : entity work.tree generic map (LEAVES / 2) port map (d(LEAVES / 2 - 1 downto 0), low);
        upper : entity work.tree generic map (LEAVES - LEAVES / 2)
            port map (d(LEAVES - 1 downto LEAVES / 2), high);
        q <= low xor high;
    end generate;
end architecture;

library ieee;
use ieee.std_logic_1164.all;

entity top is
    port (d : in std_logic_vector(2 downto 0); q : out std_logic);
end entity;

architecture rtl of top is
begin
    u : entity work.tree generic map (LEAVES => 3) port map (d => d, q => q);
end architecture;
