// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// What a synthesis left behind, with a folder of its cells.
module netlist (a, b, y);
  input a, b;
  output y;
  wire \$n1 , n2;
  LOGIC_AND2 \$u1 (.A(a), .B(b), .Y(\$n1 ));
  LOGIC_INV  u2  (.A(\$n1 ), .Y(n2));
  PAD_OUT    u3  (.I(n2), .PAD(y));
endmodule
