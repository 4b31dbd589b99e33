// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "generatedvhdl.h"

namespace {

const char Package[] = R"(library ieee;
use ieee.std_logic_1164.all;

package bench_types is
    type state_t is (idle, fetch, run, flush, done);
    type link_t is record
        valid : std_logic;
        count : natural range 0 to 255;
        state : state_t;
        data  : std_logic_vector(31 downto 0);
    end record;
    type links_t is array (natural range <>) of link_t;
end package;
)";

const char Context[] = R"(
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;
use work.bench_types.all;

)";

// '#' stands for the number of the entity, '%' for a width that depends on it.
const char Block[] = R"(entity block_# is
    generic (STAGES : positive := 8);
    port (
        clk    : in  std_logic;
        enable : in  boolean;
        i      : in  link_t;
        o      : out link_t
    );
end entity;

architecture rtl of block_# is
    signal held    : links_t(0 to 3);
    signal counter : unsigned(%-1 downto 0);
    signal chain   : std_logic_vector(0 to STAGES);
    signal busy    : boolean;
begin
    process (clk)
    begin
        if rising_edge(clk) then
            if enable then
                held(0) <= i;
                held(1) <= held(0);
                held(2) <= held(1);
                held(3).data <= held(2).data xor i.data;
            end if;
            counter <= counter + #;
            busy    <= held(0).valid = '1';
        end if;
    end process;

    chain(0) <= i.valid;
    stage : for n in 0 to STAGES - 1 generate
        signal step : std_logic_vector(15 downto 0);
        signal flag : std_logic;
    begin
        step <= held(2).data(15 downto 0) when chain(n) = '1' else (others => '0');
        flag <= step(n);
        wide : if n mod 2 = 1 generate
            signal sum : std_logic_vector(7 downto 0);
        begin
            sum <= step(7 downto 0);
        end generate;
        chain(n + 1) <= flag;
    end generate;

    o.valid <= chain(STAGES);
    o.count <= held(2).count;
    o.state <= run when busy else idle;
    o.data  <= held(3).data;
end architecture;
)";

QByteArray number(int value)
{
    return QByteArray::number(value);
}

QByteArray group(int index, const GeneratedVhdl &design)
{
    const QByteArray name = "group_" + number(index);
    const QByteArray last = number(design.blocksPerGroup);
    QByteArray text = "entity " + name +
                      " is\n    port (clk : in std_logic; enable : in boolean; i : in link_t;"
                      " o : out link_t);\nend entity;\n\narchitecture rtl of " +
                      name + " is\n    signal links : links_t(0 to " + last +
                      ");\nbegin\n    links(0) <= i;\n    o <= links(" + last + ");\n";
    for (int i = 0; i < design.blocksPerGroup; ++i)
        text += "    block_inst_" + number(i) + " : entity work.block_" +
                number((index * design.blocksPerGroup + i) % design.blockEntities) +
                "\n        port map (clk => clk, enable => enable, i => links(" + number(i) +
                "), o => links(" + number(i + 1) + "));\n";
    return text + "end architecture;\n";
}

} // namespace

QByteArray GeneratedVhdl::source() const
{
    QByteArray text(Package);
    for (int i = 0; i < blockEntities; ++i)
        text +=
            Context + QByteArray(Block).replace("#", number(i)).replace("%", number(24 + i % 8));
    for (int i = 0; i < groupEntities; ++i)
        text += Context + group(i, *this);
    const QByteArray count = number(groups);
    text += Context +
            QByteArray("entity bench_top is\n    port (clk : in std_logic; i : in link_t;"
                       " o : out link_t);\nend entity;\n\n"
                       "architecture rtl of bench_top is\n    signal links : links_t(0 to ") +
            count + ");\nbegin\n    links(0) <= i;\n    o <= links(" + count + ");\n";
    for (int i = 0; i < groups; ++i)
        text += "    group_inst_" + number(i) + " : entity work.group_" +
                number(i % groupEntities) +
                "\n        port map (clk => clk, enable => true, i => links(" + number(i) +
                "), o => links(" + number(i + 1) + "));\n";
    return text + "end architecture;\n";
}
