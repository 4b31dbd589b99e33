-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0
architecture a of e is
begin
  g : case (n) generate
    when x : 1 | 3 downto 2 => signal m : t; begin y <= m(s) & m(3)(s); end x;
    when t range 0 to 1 | v'range => u : c port map (p => s);
    when others =>
      h : if y : n = 1 generate end y; else generate end generate;
  end generate;
  -- synthesis translate_off
  p(x);
  /* pragma translate_on */
end;
