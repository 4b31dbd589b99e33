-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0
entity e is port (a : in bit := (1, 2)); end;
architecture a of e is
  signal a, b, \Ext!"\\x\, clk : std_logic := '0';
  signal v, w : std_logic_vector(3 downto 0) := (others => '-');
  signal r : rec_t := (a | b => '0', c => x"F");
  signal ra : arr_t(0 to 3);
  signal u : unsigned(7 downto 0) := 8x"ff";
  shared variable sv : prot;
  alias va : std_logic_vector(1 downto 0) is v(3 downto 2);
  alias plus is "+" [rec_t, rec_t return rec_t];
  constant ch : character := ''';
  constant st : string := "--""" & '"' & "/*";
  component leaf is generic (g : integer := 3); port (x : in std_logic := '0'; y : out std_logic; z : inout std_logic_vector(g downto 0)); end component;
  for u1 : leaf use entity work.leaf(other) generic map (g => g) port map (x => x, y => y, z => z);
  for all : comp use open;
  function conv (x : bit) return integer is begin if x = '1' then return 1; end if; return 0; end;
  package inst is new work.gp generic map (t => bit, w => 4, conv => conv);
  package np is component cn is port (z : in bit); end component; constant kk : integer := 3; end package np;
  use np.all;
  attribute mark of u : signal is "generate";
  attribute keep : boolean; attribute keep of a, b : signal is true; attribute mark of rtl : architecture is "x"; attribute mark of G1 : label is "y";
begin
  a <= '1' when clk = '1' else '0' after 3 ns;
  with v select b <= '1' when "0000" | "0001", '0' when others;
  la : \Ext!"\\x\ <= std_logic'('1') and a;
  lb : with v select w <= "1111" when "1000", "0000" when others;
  (r.a, r.b) <= std_logic_vector'("01");
  as : assert v'length = 4 report "process" severity note;
  pc : p(s => clk, k => 3);
  p(clk);
  postponed assert true;
  pp : postponed process (a) begin end postponed process pp;
  process (all) is
    variable x : integer; type lt is (one, two); 
    procedure inner (i : integer) is begin x := i; end;
  begin
    if clk'event and clk = '1' then x := f(3, y => 4); elsif ch = ''' then x := 2; else x := 3; end if;
    case? v is when "1---" => x := 1; when others => null; end case?;
    x := 3 when a = '1' else 4;
    v(0) <= '1' when a = '1' else '0';
    w <= force "0000"; w <= release;
    lp : for i in v'range loop next lp when i = 2; end loop lp;
    inner(3);
  end process;
  process begin wait until rising_edge(clk) for 10 ns; wait; end process;
  u1 : leaf port map (x => a, y => open, z => open);
  u2 : component comp generic map (3) port map (a, y => b);
  u3 : entity work.leaf(rtl) generic map (g => f(1, y => (2))) port map (x => not a, z(3 downto 1) => v(3 downto 1), z(0) => clk);
  u4 : configuration work.cfg port map (a, open);
  u5 : cn port map (z => '1');
  B1 : block (clk = '1') is generic (g : integer := 3); generic map (g => 3); port (p1 : in std_logic; q1 : out std_logic); port map (p1 => clk, q1 => open); signal q : std_logic; begin ub : comp port map (q); bb : block begin end block; end block B1;
  G1 : for i in 0 to 3 generate signal s : std_logic; begin uu : comp port map (s); end; end generate G1;
  G2 : if A1 : K > 3 generate signal s : std_logic; begin uu : comp port map (s); end A1; elsif A2 : K = 2 generate uu : comp port map (clk); else A3 : generate begin inn : for j in v'range generate signal dd : std_logic; begin uj : comp port map (v(j)); end generate; end A3; end generate G2;
  G3 : case np.kk generate when C1 : 1 | 2 => signal s : bit; begin uu : comp; end C1; when 3 to 5 => u9 : c2 port map (a); when others => end generate;
  G4 : for i in v'range generate p2 : process (a) begin end process; end generate;
  G5 : for i in 0 to 1 generate constant loc : integer := i; function lf return integer is begin return loc; end; begin end generate;
end architecture rtl;
