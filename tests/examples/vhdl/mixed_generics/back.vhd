-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

library ieee;
use ieee.std_logic_1164.all;

entity back is
    generic (
        N     : natural := 9;
        TEXT  : string := "abcd";
        BITS  : std_logic_vector(4 downto 0) := "00000";
        SPEED : real := 1.0;
        FLAG  : boolean := false
    );
    port (i : in std_logic);
end entity;

architecture rtl of back is
    signal by_number : std_logic_vector(N - 1 downto 0);
    signal by_text   : std_logic_vector(1 to TEXT'length);
    signal by_speed  : std_logic_vector(integer(SPEED) downto 0);
begin
    lanes : for k in BITS'reverse_range generate
        one : if BITS(k) = '1' generate
            signal set : std_logic;
        begin
            set <= i;
        end generate;
    end generate;
    flagged : if FLAG generate
        signal is_flagged : std_logic;
    begin
    end generate;
end architecture;
