// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Names as a netlist writer leaves them behind.
module top(input clk, input \data[0] , output \q.out );
    wire \u_a/n1 , \n$2 ;
    wire [1:0] \bus-a ;
    wire n$3;
    assign \u_a/n1 = \data[0] ;
    assign \bus-a [1] = \u_a/n1 ;
    \cell:x \u_a/u_b[0] (.\in+ (\bus-a [1]), .out(\q.out ));
endmodule
module \cell:x (input \in+ , output out);
    assign out = ! \in+ ;
endmodule
