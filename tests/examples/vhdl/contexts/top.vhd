-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

-- Contexts, packages with generics, operators on conditions.
context work.common;

entity top is
    port (clk : in std_logic);
end entity;

architecture rtl of top is
    package bytes is new work.words generic map (WIDTH => 3);
    signal word : std_logic_vector(bytes.LAST downto 0);
    signal up   : std_logic;
    signal tap  : std_logic_vector(0 to 2);
begin
    u : entity work.leaf port map (clk => clk);
    up  <= '1' when ?? clk else '0';
    tap <= (clk, others => or word);
end architecture;
