-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

context work.common;

entity leaf is
    port (clk : in std_logic);
end entity;

architecture rtl of leaf is
    signal count : std_logic_vector(2 downto 0);
    signal flag  : std_logic;
begin
    count <= std_logic_vector(unsigned(count) + 1) when rising_edge(clk);
end architecture;
