// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Two underscores, escaped names, names like those that tools make.
module top(input a__b);
    wire my__net;
    wire __Vcellinp;
    wire x__DOT__y;
    wire \a/b ;
    wire \c.d ;
    wire \e[0] ;
    wire \weird"<&>$ ;
    wire [1:0] \bus/x[3] ;
    assign \a/b = a__b;
    assign \bus/x[3] [1] = a__b;
    sub__mod \u/0 (.i__n(a__b));
endmodule

module sub__mod(input i__n);
    wire \in.side ;
endmodule
