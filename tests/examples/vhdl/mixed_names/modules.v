// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

module \Odd.Name (input i, input \in/side );
    wire signal, \entity+ ;
endmodule

module Only_Verilog(input I);
    wire i;
    reg_bank u_bank(.SIGNAL1(I), .Wire1(), .\Ext-Port (i));
endmodule
