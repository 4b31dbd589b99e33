-- SPDX-FileCopyrightText: The TARN Inserter authors
-- SPDX-License-Identifier: Apache-2.0

-- Names in the spelling of their declarations, whatever their uses write; extended identifiers.
LIBRARY IEEE;
USE IEEE.Std_Logic_1164.ALL;

ENTITY SubMod IS
    PORT (ClkIn, \Reset-N\ : IN Std_Logic; DataOut : OUT Std_Logic_Vector(1 DOWNTO 0));
END ENTITY SubMod;

ARCHITECTURE Rtl OF submod IS
    SIGNAL HeldBit : STD_LOGIC;
    TYPE MixedRecord IS RECORD
        FirstField  : Std_Logic;
        \2nd.Field\ : Std_Logic_Vector(0 TO 1);
    END RECORD;
    SIGNAL InRecord : mixedrecord;
    SIGNAL \heldbit\, \HELDBIT\ : std_logic;
BEGIN
    dataout(0)         <= CLKIN;
    INRECORD.FIRSTFIELD <= heldbit;
    \HELDBIT\          <= clkin;
END ARCHITECTURE;

LIBRARY IEEE;
USE IEEE.Std_Logic_1164.ALL;

ENTITY TopLevel IS
    PORT (Clock : IN Std_Logic);
END ENTITY;

ARCHITECTURE Structure OF TOPLEVEL IS
    SIGNAL \a/b\, \c.d\, \e(0)\, \back\\slash\, \with blank\, \<&">\, \signal\ : Std_Logic;
    SIGNAL \bus/x\ : std_logic_vector(1 downto 0);
    SIGNAL MixedCase, UPPER, lower : STD_LOGIC;
BEGIN
    \a/b\ <= clock;
    \bus/x\(1) <= clock;
    MIXEDCASE <= clock;
    GenScope : FOR Index IN 0 TO 0 GENERATE
        SIGNAL InScope : std_logic;
    BEGIN
        inscope <= clock;
        \u/0\ : ENTITY work.SUBMOD PORT MAP (CLKIN => clock, \Reset-N\ => mixedcase, DATAOUT => OPEN);
    END GENERATE;
    U_Sub : ENTITY work.SubMod PORT MAP (clock, lower, OPEN);
END ARCHITECTURE;
