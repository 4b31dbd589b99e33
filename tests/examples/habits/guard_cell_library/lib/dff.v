// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`suppress_faults
`enable_portfaults
`timescale 1ns/10ps
`delay_mode_path
`celldefine
`unconnected_drive pull1
module DFFR(Q, QN, D, CK, RN);
    output Q, QN;
    input  D, CK, RN;
    reg    notifier;
    wire   state;
    udp_dffr #0.1 (state, D, CK, RN, notifier);
    buf (Q, state);
    not (QN, state);
    specify
        specparam tPLH$CK$Q = 0.2, tPHL$CK$Q = 0.3;
        (posedge CK => (Q +: D)) = (tPLH$CK$Q, tPHL$CK$Q);
        (negedge RN => (Q +: 1'b0)) = (0.1);
        if (RN) (CK => QN) = (0.2, 0.2);
        $setuphold(posedge CK &&& RN, D, 0.1, 0.1, notifier);
        $width(negedge RN, 0.5, 0, notifier);
    endspecify
endmodule
`nounconnected_drive
`endcelldefine
`disable_portfaults
`nosuppress_faults

primitive udp_dffr(q, d, ck, rn, notifier);
    output q;
    reg    q;
    input  d, ck, rn, notifier;
    initial q = 1'b0;
    table
    //  d  ck  rn  nt : q : q+
        0 (01) 1   ?  : ? : 0;
        1 (01) 1   ?  : ? : 1;
        ? (1x) 1   ?  : ? : -;
        ? (?0) 1   ?  : ? : -;
        *  ?   ?   ?  : ? : -;
        ?  ?   0   ?  : ? : 0;
        ?  ? (?1)  ?  : ? : -;
        ?  ?   ?   *  : ? : x;
    endtable
endprimitive
