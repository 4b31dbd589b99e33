-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

library ieee;
use ieee.std_logic_1164.all;

package sizes is
    constant WIDTH : positive := 2;
end package;

library ieee;
use ieee.std_logic_1164.all;
use work.sizes.all;

entity cell is
    port (i : in std_logic_vector(WIDTH - 1 downto 0));
end entity;

architecture rtl of cell is
    signal in_gates : std_logic;
    signal SPELLING : std_logic;
begin
end architecture;
