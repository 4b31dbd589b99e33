-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0
package body util is
  constant K : integer := 16#F_F# + 2#1010#e2;
  type prot is protected body
    variable v : integer := 0;
    procedure inc (by : integer := 1) is begin if by > 0 then v := v + by; else null; end if; end;
    impure function get return integer is begin return v; end function get;
  end protected body prot;
  function "+" (l, r : rec_t) return rec_t is begin return l; end function "+";
  function f (x : integer; y : integer := 3) return integer is
    type loc is record q : integer; end record;
    variable r : loc;
    procedure nest (z : integer) is
      function nest2 return integer is begin for i in 0 to 3 loop if i = 2 then return i; end if; end loop; return 0; end;
    begin
      case z is when 0 | 1 => null; when 2 to 5 => r.q := nest2; when others => l1 : while true loop exit l1 when z = 3; next l1; end loop l1; end case;
    end procedure nest;
  begin
    nest(x); return r.q;
  end function f;
  procedure p (signal s : out std_logic; constant k : in integer := 0) is begin s <= '1' after 1 ns; end procedure;
end package body;

package gp is generic (type t; w : integer := 3; function conv (x : t) return integer); 
  component incomp is port (a : in bit); end component; function g (x : t) return integer; end package gp;
