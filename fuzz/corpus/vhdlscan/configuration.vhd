-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0
context c is library l; use l.p.all; end;
context work.c;
configuration c of e is
  for a for all : c use entity w.c(a) generic map (1) port map (a => open); end for;
    for g(0) for u1, u2 : d use configuration w.e; for b end for; end for; end for;
  end for;
end configuration;
