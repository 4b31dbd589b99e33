// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

`default_nettype none
module strict(input wire a, output wire y);
    assign y = ~a;
endmodule
`default_nettype wire
