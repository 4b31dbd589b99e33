-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

-- Code that synthesis does not see, with a library that is not there.
library ieee;
use ieee.std_logic_1164.all;
-- synthesis translate_off
library nowhere;
use nowhere.models.all;
-- synthesis translate_on

entity top is
    port (clk : in std_logic);
end entity;

architecture rtl of top is
    signal kept : std_logic;
    -- pragma translate_off
    signal hidden : model_t;
    -- pragma translate_on
begin
    -- Synopsys Translate_Off
    kept <= hidden.value;
    u : entity nowhere.model port map (clk);
    -- Synopsys Translate_On
end architecture;
