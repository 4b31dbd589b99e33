-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

context common is
    library ieee;
    use ieee.std_logic_1164.all;
    use ieee.numeric_std.all;
end context;

context work.common;

package words is
    generic (WIDTH : positive);
    constant LAST : natural := WIDTH - 1;
end package;
